#!/usr/bin/env python3
"""Shows that core_links.py finds libraries of drawing and lets others pass."""

import unittest

from core_links import needed_libraries, objections

LDD = """\tlinux-vdso.so.1 (0x00007ffc)
\tlibrunsieve-core.so.0.1 => /build/lib/librunsieve-core.so.0.1 (0x00007f)
\tlibc.so.6 => /lib/libc.so.6 (0x00007f)
\t/lib64/ld-linux-x86-64.so.2 (0x00007f)
"""


class CoreLinksTest(unittest.TestCase):
    def test_names_are_read(self):
        self.assertEqual(["linux-vdso.so.1", "librunsieve-core.so.0.1", "libc.so.6", "ld-linux-x86-64.so.2"],
                         needed_libraries(LDD))

    def test_libraries_that_draw_nothing_pass(self):
        self.assertEqual([], objections("runsieve", LDD))

    def test_libraries_of_windows_and_drawing_are_refused(self):
        for library in ("libvtkCommonCore-9.1.so.9.1", "libQt5Core.so.5", "libGL.so.1", "libX11.so.6"):
            self.assertEqual([f"runsieve needs {library}"],
                             objections("runsieve", LDD + f"\t{library} => /lib/{library} (0x00007f)\n"))


if __name__ == "__main__":
    unittest.main()
