"""Reading errors carried through the model from Python."""
import inspect
import math
import unittest

import numpy as np
import telmarion
from hips import DEFAULT, KEYS, KNOWN, RESULTS
from telmarion import Status, _core


def uncertainty(**changes):
    return telmarion.uncertainty(**{**DEFAULT, **changes})


ERRORS = {"lizm_u": 0.1, "thetaCE_u": 2.5, "headRadius_u": 0.0005, "bodyWeight_u": 1.0}


def monte_carlo(trials, **errors):
    """The results of trials drawn by NumPy, for comparison."""
    chance = np.random.default_rng(5)
    drawn = {key: chance.normal(DEFAULT[key], errors.get(f"{key}_u", 0.0), trials) for key in KEYS}
    return telmarion.compute(**drawn)


class Result(unittest.TestCase):
    def test_without_errors_is_the_model_and_an_interval_of_no_width(self):
        found, model = uncertainty(), telmarion.compute(**DEFAULT)
        self.assertEqual((found.status, found.trials, found.ok), (Status.OK, 8192, 8192))
        for key in RESULTS:
            one = getattr(found, key)
            self.assertEqual([one.estimate, one.u, one.low, one.high],
                             [getattr(model, key), 0.0, getattr(model, key), getattr(model, key)])

    def test_is_that_of_trials_drawn_by_numpy(self):
        found, drawn = uncertainty(**ERRORS), monte_carlo(200_000, **ERRORS)
        for key in RESULTS:
            one, trials = getattr(found, key), getattr(drawn, key)
            width = one.high - one.low
            self.assertAlmostEqual(one.estimate / KNOWN[key], 1.0, delta=1e-11)
            self.assertAlmostEqual(one.u / trials.std(), 1.0, delta=0.02, msg=key)
            for end, share in [(one.low, 0.025), (one.high, 0.975)]:
                self.assertAlmostEqual(end, np.quantile(trials, share), delta=0.02 * width, msg=key)

    def test_of_uniform_errors_has_their_shape(self):
        """The weight alone moves pmax, in proportion."""
        found = uncertainty(bodyWeight_u=2.0, distributions={"bodyWeight": "uniform"}, trials=2**16)
        half = 2.0 * math.sqrt(3) * 0.95 / 70
        self.assertAlmostEqual(found.pmax.high / found.pmax.estimate - 1, half, delta=1e-3 * half)
        self.assertAlmostEqual(1 - found.pmax.low / found.pmax.estimate, half, delta=1e-3 * half)
        self.assertLess(found.pmaxWb.u, 1e-9 * found.pmaxWb.estimate)

    def test_covers_what_was_asked_for(self):
        found, drawn = uncertainty(**ERRORS, coverage=0.5), monte_carlo(200_000, **ERRORS)
        inside = (drawn.pmax > found.pmax.low) & (drawn.pmax < found.pmax.high)
        self.assertAlmostEqual(inside.mean(), 0.5, delta=0.01)

    def test_lengths_on_the_picture_are_divided_by_the_magnification(self):
        picture = {key: 1.2 * DEFAULT[key] for key in ["lizm", "xizm", "zizm", "Cizm", "Hizm", "headRadius"]}
        found = uncertainty(**picture, magnification=1.2, magnification_u=0.003)
        self.assertAlmostEqual(found.pmax.estimate / KNOWN["pmax"], 1.0, delta=1e-11)
        above, below = (telmarion.compute(**{**DEFAULT, **{key: length / factor for key, length in picture.items()}})
                        for factor in [1.203, 1.197])
        for key in RESULTS:
            slope = abs(getattr(above, key) - getattr(below, key)) / 0.006
            self.assertAlmostEqual(getattr(found, key).u / (0.003 * slope), 1.0, delta=0.01, msg=key)

    def test_of_the_same_seed_is_the_same(self):
        one, same, other = (uncertainty(**ERRORS, seed=seed) for seed in [7, 7, 8])
        self.assertEqual(one, same)
        self.assertNotEqual(one.pmax.low, other.pmax.low)

    def test_runs_until_it_is_settled(self):
        found = uncertainty(**ERRORS, trials="auto")
        self.assertTrue(found.settled)
        self.assertGreaterEqual(found.trials, 1024)
        self.assertEqual(uncertainty(trials=100).trials, 100)

    def test_budget_adds_up_to_one(self):
        found = uncertainty(**ERRORS, budget=True)
        self.assertEqual([*found.pmax.budget], KEYS)
        self.assertAlmostEqual(sum(found.pmax.budget.values()), 1.0, delta=1e-12)
        self.assertEqual({key for key, part in found.pmax.budget.items() if part > 0},
                         {"lizm", "thetaCE", "headRadius", "bodyWeight"})
        self.assertIn("magnification",
                      uncertainty(magnification=1.1, magnification_u=0.02, budget=True).rWb.budget)
        self.assertEqual(uncertainty(**ERRORS).pmax.budget, {})


class Hips(unittest.TestCase):
    def test_without_a_weight_have_no_peak_stress(self):
        for weight in [None, np.nan]:
            found = uncertainty(bodyWeight=weight, thetaCE_u=2.5)
            self.assertIsNone(found.pmax)
            self.assertGreater(found.pmaxWb.u, 0)

    def test_that_the_model_refuses_have_a_status_and_no_results(self):
        for changes, status in [({"thetaCE": -20}, Status.NO_POLE), ({"headRadius": 0}, Status.NOT_ABOVE_ZERO),
                                ({"xizm": np.nan}, Status.MISSING)]:
            found = uncertainty(**changes, thetaCE_u=2.5)
            self.assertEqual((found.status, found.trials, found.rWb, found.pmax), (status, 0, None, None))

    def test_near_the_range_of_refusal_lose_first_u_and_then_the_interval(self):
        few, many = uncertainty(thetaCE=0, thetaCE_u=2.5), uncertainty(thetaCE=-4, thetaCE_u=2.5)
        self.assertTrue(0.998 * few.trials <= few.ok < few.trials)
        self.assertTrue(math.isnan(few.pmax.u) and few.pmax.low < few.pmax.high)
        self.assertTrue(many.ok < 0.998 * many.trials and math.isnan(many.pmax.high))


class Refusals(unittest.TestCase):
    def test_name_the_argument(self):
        cases = [("lizm_u", -0.1, ValueError), ("thetaCE_u", np.nan, ValueError), ("zasuk_u", np.inf, ValueError),
                 ("bodyWeight_u", "1", TypeError), ("magnification", 0, ValueError),
                 ("magnification_u", 0.1, ValueError), ("coverage", 1, ValueError), ("trials", 0, ValueError),
                 ("trials", "all", ValueError), ("trials", 2**24 + 1, ValueError), ("trials", 1.5, TypeError),
                 ("seed", -1, ValueError), ("lizm", [10.4, 9], ValueError), ("Cizm", None, TypeError),
                 ("distributions", {"lizm": "flat"}, ValueError), ("distributions", {"lism": "normal"}, ValueError)]
        for name, value, kind in cases:
            with self.subTest(name=name, value=value), self.assertRaisesRegex(kind, f"^{name}\\b"):
                uncertainty(**{name: value})
        with self.assertRaisesRegex(TypeError, "'lism_u'"):
            uncertainty(lism_u=0.1)

    def test_readings_are_those_of_the_model(self):
        names = [*inspect.signature(telmarion.uncertainty).parameters]
        self.assertEqual(names[:2 * len(KEYS)], [*_core.MEASUREMENTS, *(f"{key}_u" for key in _core.MEASUREMENTS)])
        fields = [*telmarion.HipUncertainty.__dataclass_fields__]
        self.assertEqual(fields[-len(RESULTS):], [*_core.RESULTS])


if __name__ == "__main__":
    unittest.main(argv=[__file__], verbosity=1)
