"""The check of the documents finds what it is there to find."""
import pathlib
import tempfile
import unittest

import check_docs


class CheckDocs(unittest.TestCase):
    def wrong(self, text):
        with tempfile.TemporaryDirectory() as folder:
            top = pathlib.Path(folder)
            (top / "tests").mkdir()
            (top / "tests/a_test.cpp").write_text("TEST_P(Head, IsRound) {\n", encoding="utf-8")
            (top / "README.md").write_text(text, encoding="utf-8")
            return check_docs.check(top)

    def test_what_is_there_passes(self):
        for text in ["`Head.IsRound`", "`tests/a_test.cpp`", "`tests/`", "[a](tests/a_test.cpp#top)",
                     "[a](https://example.org)", "`other/thing`", "`rWb`", "`./test.sh sanitize`"]:
            self.assertEqual(self.wrong(text), [], text)

    def test_what_is_missing_is_found(self):
        for text in ["`Head.IsFlat`", "`tests/b_test.cpp`", "![a](docs/a.png)"]:
            self.assertEqual(len(self.wrong(text)), 1, text)


if __name__ == "__main__":
    unittest.main()
