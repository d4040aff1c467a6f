"""How sure the results of a hip are, given the errors of its readings."""
from __future__ import annotations

import functools
from typing import Any, Mapping

import numpy as np

from . import _core
from ._numbers import as_count, as_number
from ._results import HipUncertainty, ResultUncertainty, Status

_MOST_AUTOMATIC_TRIALS = 2**20
SOURCES = (*_core.MEASUREMENTS, "magnification")


@functools.lru_cache(maxsize=4)
def _points(seed: int) -> _core.Points:
    return _core.Points(seed)


def _not_negative(name: str, value: Any) -> float:
    number = as_number(name, value)
    if not 0.0 <= number < np.inf:
        raise ValueError(f"{name} must be finite and at least 0, not {number}")
    return number


def _values(given: tuple[Any, ...]) -> list[float | None]:
    values: list[float | None] = []
    for name, value in zip(_core.MEASUREMENTS, given):
        if value is None and name != "bodyWeight":
            raise TypeError(f"{name} must be a number, not None")
        number = None if value is None else as_number(name, value)
        unknown = name == "bodyWeight" and (number is None or np.isnan(number))
        values.append(None if unknown else number)
    return values


def _magnification(value: Any, u: Any) -> tuple[float, float] | None:
    error = _not_negative("magnification_u", u)
    if value is None:
        if error > 0.0:
            raise ValueError("magnification_u needs a magnification")
        return None
    factor = as_number("magnification", value)
    if not 0.0 < factor < np.inf:
        raise ValueError(f"magnification must be finite and above 0, not {factor}")
    return factor, error


def _distributions(given: Mapping[str, str] | None) -> list[_core.Distribution]:
    given = {} if given is None else dict(given)
    for name, kind in given.items():
        if name not in SOURCES:
            raise ValueError(f"distributions: there is no reading {name!r}")
        if kind not in _core.Distribution.__members__:
            raise ValueError(f"distributions: {name} must be normal, uniform or triangular, not {kind!r}")
    return [_core.Distribution.__members__[given.get(name, "normal")] for name in SOURCES]


def points_from(seed: Any) -> _core.Points:
    """The points that the argument `seed` chooses."""
    return _points(as_count("seed", seed, 0, 2**64 - 1))


def settings_from(coverage: Any, trials: Any, budget: bool) -> _core.Settings:
    """The arguments `coverage`, `trials` and `budget`."""
    probability = as_number("coverage", coverage)
    if not 0.0 < probability < 1.0:
        raise ValueError(f"coverage must be above 0 and below 1, not {probability}")
    automatic = isinstance(trials, str)
    if automatic and trials != "auto":
        raise ValueError(f'trials must be a whole number or "auto", not {trials!r}')
    count = _MOST_AUTOMATIC_TRIALS if automatic else as_count("trials", trials, 1, _core.MAX_TRIALS)
    return _core.Settings(probability, count, automatic, bool(budget))


def _result(found: _core._FoundResult | None) -> ResultUncertainty | None:
    if found is None:
        return None
    estimate, u, ends, budget = found
    low, high = (np.nan, np.nan) if ends is None else ends
    return ResultUncertainty(estimate, np.nan if u is None else u, low, high, dict(zip(SOURCES, budget)))


def uncertainty(*, lizm: float, xizm: float, zizm: float, Cizm: float, Hizm: float, zasuk: float,
                thetaCE: float, headRadius: float, bodyWeight: float | None = None,
                lizm_u: float = 0.0, xizm_u: float = 0.0, zizm_u: float = 0.0, Cizm_u: float = 0.0,
                Hizm_u: float = 0.0, zasuk_u: float = 0.0, thetaCE_u: float = 0.0,
                headRadius_u: float = 0.0, bodyWeight_u: float = 0.0,
                magnification: float | None = None, magnification_u: float = 0.0,
                distributions: Mapping[str, str] | None = None, coverage: float = 0.95,
                trials: int | str = 8192, seed: int = 1, budget: bool = False) -> HipUncertainty:
    """Carry the reading errors of one hip through the model.

    The interval holds the reading error, not the model's own error. A laboratory measures its own standard
    uncertainties: read some radiographs again and take the standard deviation of the differences over √2.

    Parameters
    ----------
    lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius, bodyWeight : float
        The readings, as in `compute`. A body weight of None or NaN is not known.
    lizm_u, xizm_u, zizm_u, Cizm_u, Hizm_u, zasuk_u, thetaCE_u, headRadius_u, bodyWeight_u : float, optional
        Their standard uncertainties, each in the unit of its reading.
    magnification, magnification_u : float, optional
        When given, all lengths and the radius, and their uncertainties, are as on the picture and are
        divided by this one factor.
    distributions : mapping of str to str, optional
        How the errors of a reading are spread: "normal", the default, "uniform" or "triangular", by its
        name.
    coverage : float, optional
        Probability of the intervals, above 0 and below 1.
    trials : int or "auto", optional
        Trials, 1 to 16,777,216; "auto" doubles them until two doublings in a row move no end
        of an interval by more than a hundredth of its width, up to 1,048,576.
    seed : int, optional
        Chooses the points, 0 to 2**64 - 1. The same seed gives the same intervals, on every machine.
    budget : bool, optional
        Whether to find the part of each reading, which takes a run for each.

    Returns
    -------
    HipUncertainty
        Status, trials, and for each result its estimate, standard uncertainty, probabilistically symmetric
        interval and budget.

    Raises
    ------
    TypeError
        For an argument that is unknown, not given or no number.
    ValueError
        For an uncertainty below 0, a magnification that is not above 0, and settings out of their range.

    Notes
    -----
    Propagation of distributions by the Monte Carlo method, JCGM 101:2008; the budget is that of its
    annex B. Trials that the model refuses count above all others: with any, there is no `u`; with more
    than 0.2 %, no interval.

    Examples
    --------
    >>> hip = telmarion.uncertainty(lizm=10.4, xizm=0.5, zizm=6.0, Cizm=4.4, Hizm=16.0, zasuk=0.0,
    ...                             thetaCE=30.0, headRadius=0.025, bodyWeight=70.0,
    ...                             thetaCE_u=2.5, headRadius_u=0.0005, budget=True)
    >>> print(f"{hip.pmax.estimate/1e6:.2f} MPa, from {hip.pmax.low/1e6:.2f} to {hip.pmax.high/1e6:.2f}")
    2.07 MPa, from 1.81 to 2.44
    >>> {name: round(part, 2) for name, part in hip.pmax.budget.items() if part > 0}
    {'thetaCE': 0.73, 'headRadius': 0.27}
    """
    values = _values((lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius, bodyWeight))
    given = (lizm_u, xizm_u, zizm_u, Cizm_u, Hizm_u, zasuk_u, thetaCE_u, headRadius_u, bodyWeight_u)
    errors = [_not_negative(f"{name}_u", u) for name, u in zip(_core.MEASUREMENTS, given)]
    factor = _magnification(magnification, magnification_u)
    spread = _distributions(distributions)
    settings = settings_from(coverage, trials, budget)
    points = points_from(seed)
    status, found = _core.compute_uncertainty(values, errors, factor, spread, points, settings)
    if found is None:
        return HipUncertainty(Status(status), 0, 0, True, *(None for _ in _core.RESULTS))
    done, ok, settled, results = found
    return HipUncertainty(Status(status), done, ok, settled, *map(_result, results))
