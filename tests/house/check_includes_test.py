"""The include check finds what it is there to find."""
import pathlib
import tempfile
import unittest

import check_includes


class CheckIncludes(unittest.TestCase):
    def found_in(self, path, line):
        return self.found_among({path: line})

    def found_among(self, files):
        with tempfile.TemporaryDirectory() as folder:
            for path, line in files.items():
                file = pathlib.Path(folder) / path
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(line + "\n", encoding="utf-8")
            return check_includes.check(pathlib.Path(folder))

    def test_allowed(self):
        for path, line in [
            ("model/a.cpp", "#include <cmath>"),
            ("model/a.cpp", '#include "model/b.h"'),
            ("columns/a.h", '#include "model/b.h"'),
            ("uncertainty/a.cpp", "#include <hwy/highway.h>"),
            ("uncertainty/a.cpp", '#include "model/b.h"'),
            ("case/a.h", "#include <QString>"),
            ("case/a.h", '#include "model/b.h"'),
            ("platform/a.cpp", '#include "storage/b.h"'),
            ("app/a.cpp", '#include "report/b.h"'),
            ("platform/a.cpp", "#include <QMessageBox>"),
            ("tests/model/a.cpp", '#include "view3d/b.h"'),
        ]:
            self.assertEqual(self.found_in(path, line), [], (path, line))

    def test_forbidden(self):
        for path, line in [
            ("model/a.cpp", "#include <QString>"),
            ("model/a.cpp", "#include <csv.h>"),
            ("model/a.cpp", "#include <hwy/highway.h>"),
            ("uncertainty/a.cpp", "#include <QString>"),
            ("uncertainty/a.cpp", '#include "case/b.h"'),
            ("model/a.cpp", '#include "case/b.h"'),
            ("columns/a.h", "#include <QString>"),
            ("columns/a.h", '#include "batch/b.h"'),
            ("case/a.h", "#include <QWidget>"),
            ("case/a.h", "#include <QtGui/QImage>"),
            ("case/a.h", '#include "platform/b.h"'),
            ("platform/a.h", '#include "case/b.h"'),
            ("diagram/a.cpp", '#include "model/b.h"'),
            ("view3d/a.cpp", '#include "app/b.h"'),
            ("batch/a.cpp", '# include "platform/b.h"'),
            ("batch/deep/a.cpp", '#include "platform/b.h"'),
            ("report/a.cpp", '#include "b.h"'),
            ("report/a.cpp", "#include <case/b.h>"),
        ]:
            self.assertEqual(len(self.found_in(path, line)), 1, (path, line))

    def test_circle(self):
        files = {"case/a.cpp": '#include "case/b.h"', "case/b.cpp": '#include "case/c.h"'}
        self.assertEqual(self.found_among(files), [])
        files["case/c.h"] = '#include "case/a.h"'
        self.assertEqual(len(self.found_among(files)), 1)


if __name__ == "__main__":
    unittest.main()
