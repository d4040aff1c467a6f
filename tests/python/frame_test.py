"""Hips given to `compute_frame` as pandas tables."""
import io
import os
import signal
import tempfile
import threading
import time
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


def uncertain_hips(count, seed):
    """Columns of hips with uncertainties, many of them missing, some so large that trials are refused."""
    chance = np.random.default_rng(seed)
    given = {**hips.random_hips(count, seed)}
    given["headRadius"][3] = np.nan
    given["thetaCE"] = chance.uniform(-5, 40, count)
    for name, most in [("lizm_u[mm]", 3), ("zizm_u", 0.3), ("zasuk_u", 5), ("thetaCE_u[rad]", 0.05),
                       ("headRadius_u[cm]", 0.2), ("bodyWeight_u", 20), ("magnification_u", 0.05)]:
        given[name] = chance.uniform(0, most, count)
        given[name][chance.random(count) < 0.2] = np.nan
    given["magnification"] = chance.uniform(0.9, 1.3, count)
    return given


def add_wrong_uncertainties(given):
    """The rows from 0 on; returns what their status names."""
    given["Hizm_u[kg]"] = np.full_like(given["lizm"], np.nan)
    wrong = [("lizm_u[mm]", -1, "lizm_u must not be negative"), ("zizm_u", np.inf, "zizm_u is not a number"),
             ("zasuk_u", 1e301, "zasuk_u is too large"), ("Hizm_u[kg]", 1, "Hizm_u is in a unit that does not fit"),
             ("magnification_u", -0.1, "magnification_u must not be negative"),
             ("magnification", 0, "magnification must be greater than 0"),
             ("magnification", np.nan, "magnification is missing"),
             ("magnification", np.inf, "magnification is not a number")]
    for row, (name, value, _) in enumerate(wrong):
        given[name][row] = value
    given["lizm"][0] = np.nan
    return ["lizm is missing and lizm_u must not be negative", *(words for _, _, words in wrong[1:])]


class Uncertainties(unittest.TestCase):
    def check_same(self, given, rows, **options):
        found = telmarion.compute_frame(given, **options)
        names = list(found.columns[len(given.columns):])
        self.assertEqual(names, list(rows[0])[len(given.columns):])
        for name in names[:-1]:
            np.testing.assert_array_equal(found[name].to_numpy(np.float64, na_value=np.nan),
                                          hips.numbers(rows, name), name)
        self.assertEqual(list(found["status"]), [row["status"] for row in rows])
        return found

    def test_give_what_the_program_gives_for_the_example(self):
        text = (hips.SOURCE / "examples" / "uncertain_hips.csv").read_text(encoding="utf-8")
        df = pd.read_csv(io.StringIO(text), float_precision="round_trip")
        found = self.check_same(df, hips.run_program(text))
        self.assertEqual(list(found.columns[-3:]), ["mc_trials", "mc_ok", "status"])
        self.assertEqual([found[name].dtype for name in ["mc_trials", "mc_ok"]], ["Int64", "Int64"])

    def test_give_what_the_program_gives_for_hips_of_all_kinds(self):
        given = uncertain_hips(70, seed=5)
        add_wrong_uncertainties(given)
        found = self.check_same(pd.DataFrame(given), hips.run_program(hips.table_of(given)))
        for words in ["ok$", "ok: .*no u", "ok: .*no interval", "refused", "error"]:
            self.assertTrue(found["status"].str.match(words).any(), words)

    def test_give_what_the_program_gives_with_its_options(self):
        given = uncertain_hips(10, seed=6)
        df, text = pd.DataFrame(given), hips.table_of(given)
        program = hips.run_program(text, "--coverage", "0.9", "--trials", "1000", "--seed", "7")
        found = self.check_same(df, program, coverage=0.9, trials=1000, seed=7)
        self.assertIn("pmax_lo90", found)
        self.check_same(df, hips.run_program(text, "--trials", "auto"), trials="auto")

    def test_that_are_wrong_are_errors_of_their_rows(self):
        given = {key: np.full(9, value) for key, value in DEFAULT.items()}
        for name in ["lizm_u[mm]", "zizm_u", "zasuk_u", "magnification_u"]:
            given[name] = np.full(9, np.nan)
        given["magnification"] = np.full(9, 1.0)
        words = add_wrong_uncertainties(given)
        self.assertEqual(statuses(pd.DataFrame(given)), [*(f"error: {what}" for what in words), "ok"])

    def test_that_are_missing_count_as_none(self):
        found = telmarion.compute_frame(table(2, lizm_u=[0.1, np.nan]))
        self.assertGreater(found["rWb_u"][0], 0)
        self.assertEqual([found[name][1] for name in ["rWb_u", "rWb_lo95", "rWb_hi95"]],
                         [0, found["rWb"][1], found["rWb"][1]])

    def test_by_default_are_what_the_program_gives_for_a_file_of_them(self):
        path = hips.SOURCE / "examples" / "uncertainties.csv"
        given = uncertain_hips(40, seed=8)
        program = hips.run_program(hips.table_of(given), "--uncertainty", str(path))
        self.check_same(pd.DataFrame(given), program, defaults=pd.read_csv(path))
        plain = hips.random_hips(20, seed=9)
        program = hips.run_program(hips.table_of(plain), "--uncertainty", str(path))
        found = self.check_same(pd.DataFrame(plain), program, defaults={
            "thetaCE": 2.5, "headRadius[mm]": 0.5, "lizm_u (mm)": np.float64(1), "bodyWeight": (0.5, "uniform"),
            "magnification": 0.03})
        self.assertTrue((found["mc_trials"] > 0).any())

    def test_by_default_may_be_none_at_all(self):
        found = telmarion.compute_frame(table(), defaults={})
        self.assertEqual(found["pmax_u"][0], 0)

    def test_by_default_that_cannot_be_used_are_refused_with_the_reason(self):
        rows = pd.DataFrame({"column": ["lizm", "lizm_u"], "u": [1, 1]})
        for defaults, error, words in [
                ({"theta_ce": 1}, ValueError, 'defaults: "theta_ce" is no measurement; is thetaCE meant?'),
                ({"lizm[deg]": 1}, ValueError, 'defaults: the unit "deg" does not fit; known are cm, mm'),
                ({"magnification[cm]": 1}, ValueError, 'defaults: a magnification has no unit, not "cm"'),
                ({"lizm": -1}, ValueError, "defaults: lizm must be finite and at least 0, not -1.0"),
                ({"lizm": np.nan}, ValueError, "defaults: lizm must be finite and at least 0, not nan"),
                ({"lizm": "1"}, TypeError, "defaults: lizm must hold numbers"),
                ({"lizm": (1, "flat")}, ValueError, "defaults: lizm must be normal, uniform or triangular"),
                (rows, ValueError, 'defaults: "lizm_u" is there twice'),
                (rows[["u"]], ValueError, "defaults must have the columns column and u"),
                ("u.csv", TypeError, "defaults must be a mapping or a table, not str")]:
            with self.assertRaises(error) as raised:
                telmarion.compute_frame(table(), defaults=defaults)
            self.assertIn(words, str(raised.exception))

    def test_have_the_budget_that_the_program_writes(self):
        given = uncertain_hips(30, seed=10)
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "budget.csv")
            hips.run_program(hips.table_of(given), "--budget", path)
            wanted = pd.read_csv(path, float_precision="round_trip")
        df = pd.DataFrame(given, index=np.arange(100, 130))
        results, budget = telmarion.compute_frame(df, budget=True)
        pd.testing.assert_frame_equal(results, telmarion.compute_frame(df))
        self.assertEqual(list(budget.index), list(np.repeat(df.index, 5)))
        self.assertEqual(list(budget["result"]), list(wanted["result"]))
        np.testing.assert_array_equal(budget.drop(columns="result"), wanted[[*KEYS, "magnification"]])
        self.assertTrue(budget["thetaCE"].isna().any() and (budget["thetaCE"] > 0.5).any())
        _, true_lengths = telmarion.compute_frame(table(), budget=True, defaults={"bodyWeight": 1})
        self.assertEqual(list(true_lengths["magnification"]), [0] * 5)

    def test_that_are_not_there_have_no_budget(self):
        with self.assertRaisesRegex(ValueError, "there is no uncertainty to make a budget of"):
            telmarion.compute_frame(table(), budget=True)

    def test_depend_neither_on_other_rows_nor_on_their_order_nor_on_threads(self):
        df = pd.DataFrame(uncertain_hips(40, seed=7))
        whole = telmarion.compute_frame(df, threads=1)
        self.assertGreater(whole["pmaxWb_hi95"].notna().sum(), 10)
        parts = [telmarion.compute_frame(df.iloc[part], threads=2) for part in [slice(25, 40), slice(0, 25)]]
        pd.testing.assert_frame_equal(pd.concat(parts).loc[df.index], whole, check_exact=True)
        pd.testing.assert_frame_equal(telmarion.compute_frame(df[::-1])[::-1], whole, check_exact=True)

    def test_let_other_threads_run(self):
        done = threading.Event()
        thread = threading.Thread(target=lambda: (telmarion.compute_frame(table(lizm_u=0.1), trials=2**22, threads=1),
                                                  done.set()))
        thread.start()
        steps = 0
        while not done.wait(0.001):
            steps += 1
        thread.join()
        self.assertGreater(steps, 5)

    def test_end_on_ctrl_c(self):
        df = table(2_000, lizm_u=0.1)
        begin = time.monotonic()
        with self.assertRaises(KeyboardInterrupt):
            threading.Timer(0.1, os.kill, (os.getpid(), signal.SIGINT)).start()
            telmarion.compute_frame(df, trials=2**16)
        self.assertLess(time.monotonic() - begin, 2)

    def test_in_columns_that_cannot_be_used_are_refused_with_the_reason(self):
        for error, words, wrong in [
                (ValueError, "^there is a column pmax_lo95 already", table(lizm_u=0.1, pmax_lo95=1)),
                (ValueError, "^there are two columns lizm_u", table(lizm_u=0.1, LIZM_U=0.1)),
                (TypeError, "^the column lizm_u must hold numbers", table(lizm_u="0.1"))]:
            with self.assertRaisesRegex(error, words):
                telmarion.compute_frame(wrong)
        for wrong in [{"coverage": 1}, {"trials": 0}, {"trials": "all"}, {"seed": -1}]:
            with self.assertRaisesRegex(ValueError, next(iter(wrong))):
                telmarion.compute_frame(table(lizm_u=0.1), **wrong)

    def test_add_nothing_to_a_table_that_has_none(self):
        found = telmarion.compute_frame(table(pmax_lo95=1), coverage=0.5)
        self.assertEqual(list(found.columns), [*KEYS, "pmax_lo95", *RESULTS, "status"])

    def test_may_be_of_no_hip(self):
        found = telmarion.compute_frame(table(0, lizm_u=np.zeros(0)))
        self.assertEqual((len(found), found["mc_ok"].dtype, found["status"].dtype), (0, "Int64", object))


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
