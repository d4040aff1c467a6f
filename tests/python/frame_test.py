"""Hips given to `compute_frame` as pandas tables."""
import io
import unittest
import warnings

import hips
import numpy as np
import pandas as pd
import telmarion
from hips import DEFAULT, KEYS, RESULTS


def table(rows=1, **changes):
    return pd.DataFrame({**{key: np.full(rows, value) for key, value in DEFAULT.items()}, **changes})


def renamed(**names):
    return table().rename(columns=names)


def statuses(df):
    return list(telmarion.compute_frame(df)["status"])


class CohortProgram(unittest.TestCase):
    def check_same(self, df, rows):
        found = telmarion.compute_frame(df)
        self.assertEqual(list(found.columns), [*df.columns, *RESULTS, "status"])
        for key in RESULTS:
            np.testing.assert_array_equal(found[key], hips.numbers(rows, key), key)
        np.testing.assert_array_equal(found["status"], [row["status"] for row in rows])

    def test_gives_the_same_for_the_example(self):
        text = (hips.SOURCE / "examples" / "hips.csv").read_text(encoding="utf-8")
        self.check_same(pd.read_csv(io.StringIO(text)), hips.run_program(text))

    def test_gives_the_same_for_hips_of_all_kinds(self):
        given = hips.random_hips(5_000, seed=3)
        given["headRadius"][:50] = -1
        given["bodyWeight"][25:75] = 0
        for key in KEYS:
            given[key][100:110] = np.nan
        self.check_same(pd.DataFrame(given), hips.run_program(hips.table_of(given)))

    def test_gives_the_same_in_other_units(self):
        given = hips.random_hips(500, seed=4)
        names = {"lizm": "LIZM (mm)", "thetaCE": "thetaCE[rad]", "headRadius": "headRadius[mm]", "zasuk": "zasuk[°]"}
        given["lizm"] *= 10
        given["thetaCE"] *= np.pi / 180
        given["thetaCE"][:5] = 7
        given["headRadius"] *= 1000
        given = {names.get(key, key): column for key, column in given.items()}
        self.check_same(pd.DataFrame(given), hips.run_program(hips.table_of(given)))


class Table(unittest.TestCase):
    def test_keeps_its_other_columns_and_its_index(self):
        df = table(3, name=["a", "b", "a"])
        df.index = pd.Index([7, 7, 9], name="patient")
        df[5] = pd.Categorical(["x", "y", "x"])
        before = df.copy()
        found = telmarion.compute_frame(df)
        pd.testing.assert_frame_equal(df, before)
        pd.testing.assert_frame_equal(found[before.columns], before)
        found.loc[:, "name"] = "changed"
        pd.testing.assert_frame_equal(df, before)

    def test_may_have_other_columns_of_the_same_name(self):
        df = pd.concat([table(2), pd.DataFrame([[1, 2], [3, 4]], columns=["note", "note"])], axis=1)
        self.assertEqual(list(telmarion.compute_frame(df).columns), [*df.columns, *RESULTS, "status"])

    def test_may_be_empty(self):
        found = telmarion.compute_frame(table(0))
        self.assertEqual(len(found), 0)
        self.assertEqual([found[key].dtype for key in RESULTS], [np.float64] * 5)
        self.assertEqual(found["status"].dtype, object)

    def test_may_hold_any_numbers(self):
        kinds = {"lizm": [104, 104], "zasuk": pd.array([0, 0], dtype="Int64"),
                 "headRadius": np.array([25, 25], dtype=np.uint8),
                 "bodyWeight": pd.array([70.0, pd.NA], dtype="Float64")}
        df = table(2, **kinds).rename(columns={"lizm": "lizm[mm]", "headRadius": "headRadius[mm]"})
        found = telmarion.compute_frame(df)
        self.assertEqual(found["rWb"][0], telmarion.compute(**DEFAULT).rWb)
        self.assertEqual(list(found["pmax"].isna()), [False, True])

    def test_may_lack_the_weight(self):
        found = telmarion.compute_frame(table().drop(columns="bodyWeight"))
        self.assertTrue(np.isnan(found["pmax"][0]))
        self.assertEqual(found["status"][0], "ok")

    def test_names_every_column_at_fault_in_the_status(self):
        self.assertEqual(
            statuses(table(4, lizm=[np.nan, 10.4, np.inf, 10.4], headRadius=[0, 0.025, 0.025, 0.025],
                           bodyWeight=[70, 0, 70, np.nan])),
            ["error: lizm is missing and headRadius must be greater than 0",
             "error: bodyWeight must be greater than 0", "error: lizm is not a number", "ok"])
        self.assertEqual(statuses(table(**{key: [np.nan] for key in KEYS})), ["error: the row holds no measures"])


class Header(unittest.TestCase):
    def check_refused(self, df, words, kind=ValueError):
        with self.assertRaisesRegex(kind, words):
            telmarion.compute_frame(df)

    def test_that_cannot_be_used_is_refused_with_the_reason(self):
        self.check_refused(renamed(lizm="lism"), "^the column lizm is missing")
        self.check_refused(renamed(thetaCE="theta CE"), '"theta CE" is perhaps thetaCE')
        self.check_refused(renamed(lizm="lizm[inch]"), '^the unit "inch" of column lizm is not known')
        self.check_refused(table(LIZM=[1.0]), "^there are two columns lizm")
        self.check_refused(table(pmax=[1.0]), "^there is a column pmax already")
        self.check_refused(pd.concat({"a": table()}, axis=1), "^df has columns of several levels")

    def test_warns_of_a_name_that_is_close_to_one_that_is_used(self):
        with self.assertWarnsRegex(UserWarning, '"body_weight" is not used; is bodyWeight meant') as caught:
            found = telmarion.compute_frame(renamed(bodyWeight="body_weight"))
        self.assertEqual(caught.filename, __file__)
        self.assertTrue(np.isnan(found["pmax"][0]))

    def test_does_not_warn_of_other_names(self):
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            telmarion.compute_frame(table(hospital=["x"], bodyHeight=[170.0]))

    def test_may_hold_any_text(self):
        df = table(**{"\ud800": [1], "": [2], "Größe": [3]})
        self.assertEqual(statuses(df), ["ok"])

    def test_of_a_column_without_numbers_is_named(self):
        for wrong in [["10,4"], [True], pd.to_datetime(["2020-01-01"]), pd.Categorical(["x"])]:
            self.check_refused(table(lizm=wrong), "^the column lizm must hold numbers", TypeError)
        self.check_refused(table(lizm=["x"]).rename(columns={"lizm": "lizm [mm]"}), r"^the column lizm \[mm\]",
                           TypeError)


if __name__ == "__main__":
    unittest.main(argv=[__file__], verbosity=1)
