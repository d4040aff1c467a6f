"""Uncertainties of measurements, from the columns of a table and from a file of defaults."""
import csv
import io
import math
import sys
import unittest

from cohort_program import Case, HEADER, HIP, RESULTS, rows, run

SPREADS = [f"{key}_{end}" for key in RESULTS[:5] for end in ("u", "lo95", "hi95")]
ADDED = [*RESULTS[:5], *SPREADS, "mc_trials", "mc_ok", "status"]
NORMAL_975 = 1.959963984540054  # quantiles of the standard normal distribution
NORMAL_95 = 1.6448536269514722
TRUE_HIP = [10.4, 0.5, 6.0, 4.4, 16.0, 0.0, 30.0, 0.025, 70.0]


def table(columns, *fields):
    return f"{HEADER},{columns}\n" + "".join(f"{HIP},{row}\n" for row in fields)


def hip(**changed):
    values = dict(zip(HEADER.split(","), TRUE_HIP)) | changed
    return ",".join(repr(value) for value in values.values())


def results_of(*hips):
    """What the program gives for these hips without uncertainties."""
    done = run(text=HEADER + "\n" + "".join(row + "\n" for row in hips))
    return [{key: float(row[key]) for key in RESULTS[:5]} for row in rows(done.stdout)]


class Uncertainty(Case):
    def only_row(self, text, *options, status=0, errors=None):
        done = run(*options, text=text)
        self.check(done, status, *([] if errors is None else [errors]))
        (row,) = rows(done.stdout)
        return row

    def near(self, text, expected, relative):
        self.assertLess(abs(float(text) - expected), relative * abs(expected), (text, expected))

    # A result that grows with one measurement has the ends of its interval where the measurement has.
    def test_one_angle_moves_the_ends_to_those_of_the_angle(self):
        row = self.only_row(table("thetaCE_u", "2.5"), "--trials", "65536")
        low, high = results_of(hip(thetaCE=30 + 2.5 * NORMAL_975), hip(thetaCE=30 - 2.5 * NORMAL_975))
        for key in ("pmax", "pmaxWb"):
            self.near(row[f"{key}_lo95"], low[key], 2e-3)
            self.near(row[f"{key}_hi95"], high[key], 2e-3)
        for key in ("rWb", "thetaR"):
            self.assertEqual(row[f"{key}_u"], "0")
            self.assertEqual(row[f"{key}_lo95"], row[key])
            self.assertEqual(row[f"{key}_hi95"], row[key])

    def test_the_weight_alone_gives_its_own_share(self):
        row = self.only_row(table("bodyWeight_u", "3.5"))
        pmax = float(row["pmax"])
        self.near(row["pmax_u"], pmax * 3.5 / 70, 2e-3)
        self.near(row["pmax_lo95"], pmax * (1 - NORMAL_975 * 0.05), 1e-3)
        self.near(row["pmax_hi95"], pmax * (1 + NORMAL_975 * 0.05), 1e-3)

    def test_the_magnification_divides_every_length_once(self):
        enlarged = dict(zip(HEADER.split(","), TRUE_HIP))
        for key in ("lizm", "xizm", "zizm", "Cizm", "Hizm", "headRadius"):
            enlarged[key] *= 1.25
        line = ",".join(repr(value) for value in enlarged.values())
        row = self.only_row(f"{HEADER},magnification,magnification_u\n{line},1.25,0.05\n",
                            "--trials", "65536")
        (true,) = results_of(hip())
        for key in RESULTS[:5]:
            self.near(row[key], true[key], 1e-12)
        # l/2 and the waist stay in proportion: only what the model holds fixed moves the force.
        self.assertLess(float(row["rWb_u"]) / float(row["rWb"]), 0.002)
        ends = [1.25 + 0.05 * NORMAL_975, 1.25 - 0.05 * NORMAL_975]
        moved = results_of(*(hip(**{key: enlarged[key] / end for key in
                                    ("lizm", "xizm", "zizm", "Cizm", "Hizm", "headRadius")})
                             for end in ends))
        self.near(row["pmax_hi95"], moved[0]["pmax"], 2e-3)
        self.near(row["pmax_lo95"], moved[1]["pmax"], 2e-3)

    def test_units_are_those_of_the_measurement_or_its_own(self):
        alike = [self.only_row(table(column, value)) for column, value in
                 [("headRadius_u", "0.0005"), ("headRadius_u[mm]", "0.5"), ("HEADRADIUS_U (cm)", "0.05")]]
        for row in alike[1:]:
            self.near(row["pmax_u"], float(alike[0]["pmax_u"]), 1e-9)
        inMillimetres = HEADER.replace("headRadius", "headRadius[mm]")
        line = HIP.replace("0.025", "25")
        self.assertNotEqual(line, HIP)
        row = self.only_row(f"{inMillimetres},headRadius_u\n{line},0.5\n")
        self.near(row["pmax_u"], float(alike[0]["pmax_u"]), 1e-6)

    def test_without_any_error_there_are_todays_digits_and_no_width(self):
        plain = rows(run(text=f"{HEADER}\n{HIP}\n").stdout)[0]
        row = self.only_row(table("lizm_u,thetaCE_u", "0,"))
        for key in RESULTS[:5]:
            self.assertEqual(row[key], plain[key])
            self.assertEqual(row[f"{key}_lo95"], plain[key])
            self.assertEqual(row[f"{key}_hi95"], plain[key])
            self.assertEqual(row[f"{key}_u"], "0")

    def test_columns_are_added_before_the_status(self):
        done = run(text=table("lizm_u[mm]", "1"))
        header = done.stdout.decode().split("\n")[0]
        self.assertEqual(header, ",".join([HEADER, "lizm_u[mm]", *ADDED]))
        done = run("--coverage", "0.9", text=table("lizm_u[mm]", "1"))
        self.assertIn(",pmax_lo90,pmax_hi90,", done.stdout.decode())

    def test_the_coverage_decides_the_width(self):
        row = self.only_row(table("bodyWeight_u", "3.5"), "--coverage", "0.9")
        self.near(row["pmax_hi90"], float(row["pmax"]) * (1 + NORMAL_95 * 0.05), 1e-3)

    # The shares of refused trials are those of the normal distribution below the edge of the range.
    def test_refused_trials_take_u_and_then_the_interval(self):
        lines = "".join(f"{hip(thetaCE=angle)},2.5\n" for angle in (0.0, -2.0, -4.0))
        done = run(text=f"{HEADER},thetaCE_u\n{lines}")
        self.check(done, 0)
        few, more, many = rows(done.stdout)
        for row, share in ((few, 0.0004), (more, 0.005), (many, 0.038)):
            refused = int(row["mc_trials"]) - int(row["mc_ok"])
            self.assertLess(abs(refused / 8192 - share), 0.2 * share)
            self.assertEqual(row["pmax_u"], "")
            self.assertIn(f"{refused} of 8192 trials refused", row["status"])
        self.assertGreater(float(few["pmax_hi95"]), float(few["pmax"]))
        self.assertTrue(few["status"].endswith("and so no u"))
        for row in (more, many):
            self.assertEqual((row["pmax_lo95"], row["pmax_hi95"]), ("", ""))
            self.assertTrue(row["status"].endswith("and so no interval"))
            self.assertTrue(row["pmax"])

    def test_a_refused_hip_and_a_bad_row_have_no_interval(self):
        lines = f"{hip(thetaCE=-60.0)},2.5\nx\n{hip(lizm='a')},2.5\n".replace("'", "")
        done = run(text=f"{HEADER},thetaCE_u\n{lines}")
        self.assertEqual(done.returncode, 1)
        for row in rows(done.stdout):
            self.assertEqual([row[name] for name in SPREADS + ["mc_trials", "mc_ok"]], [""] * 17)
            self.assertRegex(row["status"], "^(refused|error): ")

    def test_a_wrong_uncertainty_is_an_error_of_its_row_that_names_the_column(self):
        for column, value, what in [("lizm_u", "-1", "lizm_u must not be negative"),
                                    ("thetaCE_u", "much", "thetaCE_u is not a number"),
                                    ("lizm_u", "1e400", "lizm_u is too large"),
                                    ("thetaCE_u[mm]", "1", "thetaCE_u is in a unit that does not fit"),
                                    ("magnification_u", "-0.1", "magnification_u must not be negative"),
                                    ("magnification", "0", "magnification must be greater than 0"),
                                    ("magnification", "", "magnification is missing"),
                                    ("magnification", "x", "magnification is not a number")]:
            done = run(text=table(column, value))
            self.assertEqual(done.returncode, 1, column)
            (row,) = rows(done.stdout)
            self.assertEqual(row["status"], f"error: {what}")
            self.assertEqual(row["pmax"], "")

    def test_all_that_is_wrong_with_a_row_is_told(self):
        done = run(text=f"{HEADER},lizm_u\n{HIP.replace('10.4', 'x', 1)},-1\n")
        self.assertIn("lizm is not a number and lizm_u must not be negative", rows(done.stdout)[0]["status"])

    def test_a_weight_that_is_not_known_has_no_peak_stress(self):
        row = self.only_row(f"{HEADER},bodyWeight_u,thetaCE_u\n{HIP.replace(',70', ',NA')},3,2\n")
        self.assertEqual([row["pmax"], row["pmax_u"], row["pmax_hi95"]], ["", "", ""])
        self.assertGreater(float(row["pmaxWb_hi95"]), float(row["pmaxWb"]))

    def test_an_interval_depends_on_no_neighbour_order_or_thread(self):
        lines = [f"{hip(thetaCE=20.0 + k / 7)},2.5" for k in range(200)]
        header = f"{HEADER},thetaCE_u\n"
        all_of_them = run("--threads", "1", text=header + "\n".join(lines) + "\n").stdout
        threads = run("--threads", "3", text=header + "\n".join(lines) + "\n").stdout
        self.assertEqual(all_of_them, threads)
        turned = run(text=header + "\n".join(reversed(lines)) + "\n").stdout
        self.assertEqual(sorted(all_of_them.splitlines()), sorted(turned.splitlines()))
        self.assertIn(run(text=header + lines[100] + "\n").stdout.splitlines()[1], all_of_them.splitlines())

    def test_the_seed_decides_the_points(self):
        text = table("thetaCE_u", "2.5")
        first = run(text=text).stdout
        self.assertEqual(run("--seed", "1", text=text).stdout, first)
        self.assertNotEqual(run("--seed", "2", text=text).stdout, first)

    def test_trials_are_as_many_as_asked_for_or_enough(self):
        self.assertEqual(self.only_row(table("thetaCE_u", "2.5"), "--trials", "1000")["mc_trials"], "1000")
        trials = int(self.only_row(table("thetaCE_u", "2.5"), "--trials", "auto")["mc_trials"])
        self.assertGreater(trials, 2000)
        self.assertLess(trials, 1 << 20)

    def test_options_that_cannot_be_are_refused(self):
        for option, value in [("--coverage", "1"), ("--coverage", "95"), ("--coverage", "x"),
                              ("--trials", "0"), ("--trials", "many"), ("--trials", "1e6"),
                              ("--trials", "99999999999"), ("--seed", "-1"), ("--seed", "a")]:
            done = run(option, value, text=table("thetaCE_u", "2.5"))
            self.assertEqual((done.returncode, done.stdout), (2, b""), (option, value))
            self.assertIn(f'not "{value}"', done.stderr.decode())

    def test_a_column_of_the_users_own_passes_through_a_plain_table(self):
        done = run(text=f"{HEADER},pmax_u,pmax_lo95\n{HIP},mine,3\n")
        self.check(done, 0)
        self.assertEqual(rows(done.stdout)[0]["pmax_u"], "mine")
        done = run(text=f"{HEADER},pmax_u,lizm_u\n{HIP},mine,0.1\n")
        self.check(done, 2, "standard input: row 1: there is a column pmax_u already, which the program "
                            "adds; remove or rename it")

    def test_near_misses_are_named(self):
        for title, meant in [("lizm u", "lizm_u"), ("thetaCE_sd", "thetaCE_u"), ("mag", "magnification"),
                             ("bodyWeigth_u", "bodyWeight_u")]:
            done = run(text=table(title, "1"))
            self.check(done, 0, f'standard input: row 1: the column "{title}" is not used; is {meant} meant?')

    def test_the_table_for_people_shows_them(self):
        done = run("--table", text=table("thetaCE_u", "2.5"))
        titles, _, cells = done.stdout.decode().splitlines()
        self.assertNotIn("thetaCE", titles)
        self.assertEqual(titles.split(), ADDED)
        self.assertEqual(cells.split()[-3:], ["8192", "8192", "ok"])


class Defaults(Case):
    def defaults(self, text):
        return self.file("defaults.csv", text)

    def test_serve_rows_that_have_none(self):
        path = self.defaults("column,u,unit,distribution\nthetaCE,2.5,deg,normal\n")
        plain = run("--uncertainty", path, text=f"{HEADER}\n{HIP}\n")
        own = run(text=table("thetaCE_u", "2.5"))
        self.assertEqual(rows(plain.stdout)[0]["pmax_hi95"], rows(own.stdout)[0]["pmax_hi95"])
        mixed = run("--uncertainty", path, text=table("thetaCE_u", "", "0", "2.5"))
        empty, zero, same = rows(mixed.stdout)
        self.assertEqual(empty["pmax_hi95"], same["pmax_hi95"])
        self.assertEqual(zero["pmax_hi95"], zero["pmax"])

    def test_have_units_and_distributions(self):
        ends = {}
        for distribution in ("normal", "uniform", "triangular"):
            path = self.defaults(f"Distribution;Unit;U;Column\n{distribution};;3,5;bodyWeight_u\n")
            row = rows(run("--uncertainty", path, "--trials", "65536", text=f"{HEADER}\n{HIP}\n").stdout)[0]
            ends[distribution] = float(row["pmax_hi95"]) / float(row["pmax"]) - 1
        # The 97.5 % points of distributions of mean 0 and standard deviation 1.
        self.assertAlmostEqual(ends["normal"], 0.05 * NORMAL_975, delta=1e-4)
        self.assertAlmostEqual(ends["uniform"], 0.05 * math.sqrt(3) * 0.95, delta=1e-4)
        self.assertAlmostEqual(ends["triangular"], 0.05 * math.sqrt(6) * (1 - math.sqrt(0.05)), delta=1e-4)
        for name, unit, u in (("headRadius", "mm", "0.5"), ("headRadius", "m", "0.0005"), ("headRadius", "", "0.0005"),
                              ("headRadius[mm]", "", "0.5"), ("headRadius_u (mm)", "mm", "0.5")):
            path = self.defaults(f"column,u,unit\n{name},{u},{unit}\n")
            row = rows(run("--uncertainty", path, text=f"{HEADER}\n{HIP}\n").stdout)[0]
            own = rows(run(text=table("headRadius_u[mm]", "0.5")).stdout)[0]
            self.assertAlmostEqual(float(row["pmax_u"]) / float(own["pmax_u"]), 1, delta=1e-9)

    def test_know_the_magnification(self):
        path = self.defaults("column,u\nmagnification,0.04\n")
        row = rows(run("--uncertainty", path, text=f"{HEADER}\n{HIP}\n").stdout)[0]
        own = rows(run(text=table("magnification,magnification_u", "1,0.04")).stdout)[0]
        self.assertEqual(row["pmax_hi95"], own["pmax_hi95"])

    def test_that_cannot_be_used_end_the_run_before_any_output(self):
        for text, what in [("", "row 1: the file is empty"),
                           ("a,b\n", 'row 1: the columns column and u are needed; the header read is "a,b"'),
                           ("column,u\nlizm,x\n", 'row 2: u is not a number: "x"'),
                           ("column,u\nlizm,-1\n", "row 2: u must not be negative"),
                           ("column,u\n\nlizzm,1\n", 'row 3: "lizzm" is no measurement'),
                           ("column,u\ntheta_ce,1\n", 'row 2: "theta_ce" is no measurement; is thetaCE meant?'),
                           ("column,u\nlizm,1\nlizm_u,1\n", 'row 3: "lizm_u" is there twice'),
                           ("column,u,unit\nlizm,1,deg\n", 'row 2: the unit "deg" does not fit; known are cm, mm'),
                           ("column,u,unit\nlizm[mm],1,cm\n",
                            'row 2: the unit "cm" is not that of the name, "mm"'),
                           ("column,u,unit\nmagnification,1,cm\n", 'row 2: a magnification has no unit, not "cm"'),
                           ("column,u,unit,distribution\nlizm,1,,flat\n", 'row 2: the distribution "flat" is not '
                            "known; known are normal, uniform, triangular")]:
            done = run("--uncertainty", self.defaults(text), text=f"{HEADER}\n{HIP}\n")
            self.assertEqual((done.returncode, done.stdout), (2, b""), text)
            self.assertIn(f"defaults.csv: {what}", done.stderr.decode())
        done = run("--uncertainty", str(self.path / "none.csv"), text=f"{HEADER}\n{HIP}\n")
        self.assertEqual((done.returncode, done.stdout), (2, b""))
        self.assertIn("none.csv: cannot be read: No such file or directory", done.stderr.decode())


class Budget(Case):
    def budget(self, *arguments, text):
        path = self.path / "budget.csv"
        done = run("--budget", str(path), *arguments, text=text)
        self.check(done, 0)
        return list(csv.DictReader(io.StringIO(path.read_text())))

    def test_has_a_row_for_each_hip_and_result_that_adds_up_to_one(self):
        budget = self.budget(text=table("thetaCE_u,headRadius_u[mm],bodyWeight_u", "2.5,0.5,1", ",,3.5"))
        self.assertEqual(len(budget), 10)
        self.assertEqual([(row["row"], row["result"]) for row in budget[4:6]], [("2", "pmax"), ("3", "rWb")])
        self.assertEqual(list(budget[0])[3:], [*HEADER.split(","), "magnification"])
        for row in budget:
            parts = [float(part) for part in list(row.values())[3:]]
            if row["result"] in ("pmax", "pmaxWb") and row["row"] == "2":
                self.assertAlmostEqual(sum(parts), 1.0)
        self.assertEqual(float(budget[9]["bodyWeight"]), 1.0)
        self.assertEqual(float(budget[8]["bodyWeight"]), 0.0)

    # pmax is proportional to the weight, and to the square of the inverse of the radius.
    def test_has_the_parts_of_the_variance(self):
        row = self.budget(text=table("headRadius_u[mm],bodyWeight_u", "0.05,0.7"))[4]
        radius, weight = 2 * 0.05 / 25, 0.7 / 70
        whole = radius**2 + weight**2
        self.assertAlmostEqual(float(row["headRadius"]), radius**2 / whole, delta=2e-3)
        self.assertAlmostEqual(float(row["bodyWeight"]), weight**2 / whole, delta=2e-3)

    def test_needs_uncertainties_and_a_file_of_its_own(self):
        path = self.path / "budget.csv"
        done = run("--budget", str(path), text=f"{HEADER}\n{HIP}\n")
        self.check(done, 2, "standard input: row 1: there is no uncertainty to make a budget of: neither a "
                            "column such as lizm_u nor --uncertainty")
        self.assertFalse(path.exists())
        hips = self.file("hips.csv", table("lizm_u", "0.1"))
        for budget, arguments in ((hips, [hips]), ("-", [hips]), (str(path), [hips, "-o", str(path)])):
            done = run("--budget", budget, *arguments)
            self.check(done, 2, f"{budget}: the budget needs a file of its own")
        with open(hips, encoding="utf-8") as kept:
            self.assertEqual(kept.read(), table("lizm_u", "0.1"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
