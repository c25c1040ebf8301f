#!/usr/bin/env python3
"""Shows that self_contained.py finds what it must. Bad text is put together here, so that this file passes itself."""

import pathlib
import tempfile
import unittest

from self_contained import check


class SelfContainedTest(unittest.TestCase):
    def messages(self, files):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in files.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            return check(root)[1]

    def assert_found(self, text, message):
        self.assertEqual([f"a.cpp:2: {message}"], self.messages({"a.cpp": f"// first\n// {text}\n"}))

    def test_ordinary_text_passes(self):
        for text in ("part of the view", "in 2.5 parts", "#!/usr/bin/env bash", "Silverman, 1986, 2.10",
                     "std::mirror.x", "doi.org/10.18637/jss.v039.i11", "app/working/plan", "either/or"):
            self.assertEqual([], self.messages({"a.cpp": f"// {text}\n"}), text)

    def test_numbered_parts_are_found(self):
        for part in ("3" + ".1", "C " + "2" + ".3"):
            self.assert_found("see Part " + part, f"names a part of a document that is not here: Part {part}")

    def test_folders_of_one_machine_are_found(self):
        for folder in ("home", "root", "work", "tmp"):
            path = f"/{folder}/" + "jane"
            self.assert_found(f"see {path}/notes", f"names a folder of one machine: {path}")

    def test_package_hosts_are_found(self):
        for host in ("registry." + "example.org", "proxy." + "internal"):
            self.assert_found(f"from https://{host}/simple", f"names a package host: {host}")

    def test_documents_that_are_not_here_are_found(self):
        self.assert_found("see notes" + ".md", "names a document that is not here: notes" + ".md")
        self.assert_found("see docs/notes" + ".md", "names a document that is not here: docs/notes" + ".md")

    def test_documents_that_are_here_may_be_named(self):
        name = "docs/notes" + ".md"
        self.assertEqual([], self.messages({name: "", "a.cpp": f"// see {name}\n"}))

    def test_build_folders_are_not_read(self):
        path = "/home/" + "jane"
        self.assertEqual([], self.messages({"any/CMakeCache.txt": path, "any/a.cpp": path, "build/a.cpp": path}))


if __name__ == "__main__":
    unittest.main()
