"""Quoted fields of every content, written and read back by another program's rules."""
import csv
import io
import random
import sys
import unittest

from cohort_program import Case, HEADER, HIP, case_file, run


class Quoting(Case):
    """The other end is the csv module, which quotes and reads in its own way."""
    PIECES = ["a", "7", " ", '"', ",", ";", "\t", "\n", "\r\n", "'", "=", "ü", "Ж", "10.4"]

    def setUp(self):
        super().setUp()
        self.random = random.Random(20261115)

    def text(self, pieces):
        return "".join(self.random.choices(pieces, k=self.random.randrange(8)))

    def test_any_quoted_field_comes_back(self):
        for delimiter, line_end in [(",", "\n"), (";", "\r\n"), ("\t", "\n")]:
            table = [[self.text(self.PIECES), *HIP.split(","), self.text(self.PIECES)]
                     for _ in range(300)]
            typed = io.StringIO(newline="")
            writer = csv.writer(typed, delimiter=delimiter, lineterminator=line_end,
                                quoting=csv.QUOTE_ALL)
            writer.writerows([["name", *HEADER.split(","), "note"], *table])
            done = run(text=typed.getvalue())
            self.check(done, 0)
            out = io.StringIO(done.stdout.decode(), newline="")
            given = list(csv.reader(out, delimiter=delimiter))[1:]
            self.assertEqual([row[:len(table[0])] for row in given], table)
            self.assertEqual({row[-1] for row in given}, {"ok"})

    def test_any_comments_of_a_case_file_come_back(self):
        pieces = [piece for piece in self.PIECES if piece not in {"\r\n", "Ж"}]
        comments = [self.text(pieces) or "No" for _ in range(100)]
        for number, text in enumerate(comments):
            self.file(f"{number:03}.txt", case_file(comments=text))
        done = run(self.path)
        self.check(done, 0)
        out = csv.DictReader(io.StringIO(done.stdout.decode(), newline=""))
        # Behind an apostrophe a spreadsheet takes no text for a formula.
        expected = ["'" + text if text[0] in "=\t" else text for text in comments]
        self.assertEqual([row["comments"] for row in out], expected)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
