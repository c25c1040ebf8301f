#!/usr/bin/env python3
"""Shows that compiled_tests.py finds forgotten and empty test files."""

import pathlib
import tempfile
import unittest

from compiled_tests import check


class CompiledTestsTest(unittest.TestCase):
    def test_forgotten_and_empty_files_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            tests = pathlib.Path(folder).resolve()
            (tests / "plot").mkdir()
            files = {name: tests / "plot" / f"{name}_test.cpp" for name in ("empty", "forgotten", "good")}
            files["empty"].write_text("// TEST(A, B)\n")
            files["forgotten"].write_text("TEST_F(A, B)\n{}\n")
            files["good"].write_text("TEST(A, B)\n{}\n")
            count, messages = check(tests, {files["empty"], files["good"]})
        self.assertEqual(3, count)
        self.assertEqual([f"{files['forgotten']}: no program compiles it", f"{files['empty']}: no test in it"],
                         messages)


if __name__ == "__main__":
    unittest.main()
