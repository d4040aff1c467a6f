"""Case files that are not UTF-8, in every language and in none."""
import os
import sys
import unittest

from cohort_program import Case, HEADER, HIP, SOURCE, case_file, rows, run

CZECH = "Dvořáková Žofie"


def in_language(language):
    return {**os.environ, "LC_ALL": language}


class CodePages(Case):
    def name(self, *arguments, language):
        done = run(*arguments, env=in_language(language))
        self.assertEqual(done.returncode, 0, done.stderr)
        return rows(done.stdout)[0]["name"], done.stderr.decode()

    def test_the_languages_code_page_without_a_word(self):
        path = self.file("a.txt", case_file(name=CZECH, encoding="cp1250"))
        for language in ["cs_CZ.UTF-8", "cs_CZ", "pl_PL.UTF-8"]:
            self.assertEqual(self.name(path, language=language), (CZECH, ""))

    def test_the_named_code_page_in_every_language(self):
        for encoding, names in [("cp1250", ["windows-1250", "CP1250"]),
                                ("iso8859-2", ["ISO-8859-2", "iso-8859-2"]),
                                ("cp852", ["IBM852", "cp852"])]:
            text = case_file(name=CZECH, encoding=encoding)
            path = self.file("a.txt", text)
            for language in ["C", "POSIX", "tr_TR", "de_DE.UTF-8", "cs_CZ.UTF-8"]:
                for name in names:
                    self.assertEqual(self.name("--encoding", name, path, language=language),
                                     (CZECH, ""))
                    self.assertEqual(self.name("--encoding", name, self.path, language=language),
                                     (CZECH, ""))

    def test_every_kept_file_in_the_code_page_that_its_name_tells(self):
        kept = SOURCE / "tests" / "files"
        for file in ["baltic_1257.txt", "central_european_1250.txt", "cyrillic_1251.txt",
                     "greek_1253.txt", "turkish_1254.txt"]:
            page = file[-8:-4]
            name, said = self.name("--encoding", f"windows-{page}", kept / file, language="C")
            self.assertIn(f"Name          : {name}", (kept / file).read_text(f"cp{page}"))
            self.assertEqual(said, "")

    def test_utf8_stays_utf8(self):
        path = self.file("a.txt", case_file(name=CZECH, encoding="utf-8"))
        for language in ["C", "tr_TR", "cs_CZ.UTF-8"]:
            self.assertEqual(self.name(path, language=language), (CZECH, ""))
            self.assertEqual(self.name("--encoding", "windows-1251", path, language=language),
                             (CZECH, ""))

    def test_a_locale_without_a_language_is_told_once(self):
        path = self.file("a.txt", case_file(name=CZECH, encoding="cp1250"))
        said = ("not UTF-8, and read in the code page windows-1252 because the locale names no "
                "language; --encoding names another")
        for language in ["C", "POSIX", "C.UTF-8", ""]:
            environment = {**in_language(language), "LANG": ""}
            done = run(path, env=environment)
            self.check(done, 0, f"{path}: {said}")
            # The letters that these bytes are in the Western code page.
            self.assertEqual(rows(done.stdout)[0]["name"], "Dvoøáková Žofie")
        other = self.file("b.txt", case_file())
        self.file("c.txt", case_file(encoding="utf-8"))
        done = run(self.path, env=in_language("C"))
        self.check(done, 0, f"2 case files, the first {path}: {said}")
        (self.path / "more").mkdir()
        done = run(path, other, env=in_language("C"))
        self.check(done, 0, f"2 case files, the first {path}: {said}")

    def test_bytes_that_are_no_letters_are_told(self):
        self.file("a.txt", case_file())
        # 0x81 is nothing in the Western code page, and nothing in the Central European one.
        path = self.file("b.txt", case_file(name="A B").replace(b"A B", b"A \x81"))
        for page in ["windows-1250", "windows-1252"]:
            self.check(run("--encoding", page, self.path), 0,
                       f"{path}: bytes that are no letters in the code page {page}; --encoding names "
                       "another")
        self.check(run("--encoding", "windows-1251", self.path), 0)

    def test_tables_are_bytes_in_every_code_page(self):
        table = f"name,{HEADER}\nM\xfcller,{HIP}\n".encode("latin-1")
        for arguments in [(), ("--encoding", "windows-1250")]:
            done = run(*arguments, text=table, env=in_language("C"))
            self.check(done, 0)
            self.assertIn(b"\nM\xfcller," + HIP.encode(), done.stdout)

    def test_a_name_that_is_none_is_wrong_usage(self):
        path = self.file("a.txt", case_file())
        # The last ones are known, but have no ASCII where these files have it.
        for name in ["klingon", "", "1250", "UTF-16", "IBM037", "UTF-7"]:
            done = run("--encoding", name, path)
            self.assertEqual((done.returncode, done.stdout), (2, b""), name)
            said = done.stderr.decode()
            self.assertIn(f'"{name}" is not a known code page', said)
            self.assertIn("windows-1250", said)
            self.assertIn("ISO-8859-1 ", said)
            self.assertEqual(len(said.splitlines()), 1)

    def test_every_name_that_the_message_lists_is_known(self):
        path = self.file("a.txt", case_file())
        listed = run("--encoding", "klingon").stderr.decode()
        names = [f"windows-125{i}" for i in range(9)]
        names += [f"ISO-8859-{i}" for i in range(1, 16) if i != 12]  # there is no 12
        names += ["KOI8-R", "KOI8-U", "IBM850", "IBM852", "macintosh"]
        for name in names[-5:]:
            self.assertIn(name, listed)
        for name in names:
            self.assertNotIn(b"is not a known code page", run("--encoding", name, path).stderr, name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
