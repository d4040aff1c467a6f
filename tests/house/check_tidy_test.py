"""clang-tidy looks at what has changed, and only at that."""
import json
import pathlib
import sys
import tempfile
import unittest

import check_tidy

TIDY = sys.argv.pop(1)
GOOD = "inline int* Null() { return nullptr; }\n"
BAD = "inline int* Null() { return 0; }\n"


class CheckTidy(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name)
        self.build = self.top / "build"
        self.write(".clang-tidy", "Checks: '-*,modernize-use-nullptr'\nWarningsAsErrors: '*'\n"
                                  "HeaderFilterRegex: '.*'\n")
        self.write("model/null.h", GOOD)
        for source in ["model/a.cpp", "case/b.cpp", "tests/c.cpp"]:
            self.write(source, '#include "model/null.h"\n')
        self.write("case/b.cpp", "int b = 0;\n")
        self.compile("")

    def write(self, path, text):
        (self.top / path).parent.mkdir(parents=True, exist_ok=True)
        (self.top / path).write_text(text, encoding="utf-8")

    def compile(self, option):
        entries = [{"directory": str(self.top), "file": str(self.top / source),
                    "command": f"c++ {option} -std=c++20 -I{self.top} -c {self.top / source}"}
                   for source in ["model/a.cpp", "case/b.cpp", "tests/c.cpp"]]
        self.write("build/compile_commands.json", json.dumps(entries))

    def look(self, *options):
        """How many sources are looked at, and in how many something is found."""
        looked, found = check_tidy.check(self.top, self.build, TIDY, *options)
        return looked, len(found)

    def test_what_has_passed_is_not_looked_at_again(self):
        self.assertEqual(self.look(), (2, 0))
        self.assertEqual(self.look(), (0, 0))

    def test_what_is_found_is_found_again(self):
        self.write("model/null.h", BAD)
        self.assertEqual(self.look(), (2, 1))
        self.assertEqual(self.look(), (1, 1))

    def test_a_changed_header_is_looked_at_where_it_is_included(self):
        self.look()
        self.write("model/null.h", BAD)
        self.assertEqual(self.look(), (1, 1))
        self.write("model/null.h", GOOD)
        self.assertEqual(self.look(), (0, 0))

    def test_changed_options_and_configuration_are_a_reason_to_look(self):
        self.look()
        self.compile("-DNDEBUG")
        self.assertEqual(self.look(), (2, 0))
        self.write(".clang-tidy", "Checks: '-*,modernize-use-override'\n")
        self.assertEqual(self.look(), (2, 0))

    def test_a_build_without_sources_is_no_pass(self):
        self.write("build/compile_commands.json", "[]")
        self.assertEqual(self.look(), (0, 1))

    def test_what_never_passed_can_be_left_for_later(self):
        self.assertEqual(self.look(True), (0, 0))
        self.look()
        self.write("model/null.h", BAD)
        self.assertEqual(self.look(True), (1, 1))


if __name__ == "__main__":
    unittest.main()
