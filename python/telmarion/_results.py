"""What callers get back; each result is a field of two classes."""
from __future__ import annotations

import dataclasses
import enum
from typing import Generic, NamedTuple, TypeVar

from . import _core


class Status(enum.IntEnum):
    """What became of a hip. The texts are those of `telmarion-batch`.

    >>> Status.OUT_OF_RANGE.text
    "refused: resultant force outside the model's range"
    """

    OK = 0
    OUT_OF_RANGE = 1
    """Refused: the resultant force is outside the range of the model. Only the force is there."""
    NO_POLE = 2
    """Refused: no stress pole balances the force by pressure. Only the force is there."""
    NO_STRESS = 3
    """Refused: the stress is not a finite number. Only the force is there."""
    MISSING = 4
    """A measurement is NaN; only a body weight may be. Nothing is there, here and below."""
    NOT_A_NUMBER = 5
    """A measurement is infinite."""
    TOO_LARGE = 6
    """A measurement is above 1e300 in size."""
    ANGLE_TOO_LARGE = 7
    """An angle in radians (which only a table can have) is more than a full turn."""
    NOT_ABOVE_ZERO = 8
    """The radius of the head or the body weight is not above 0."""

    @property
    def text(self) -> str:
        """The status in words."""
        return _core.STATUS_TEXTS[self]


Number = TypeVar("Number")  # float, or float64 in an array
Code = TypeVar("Code")  # Status, or uint8 in an array


class HipResults(NamedTuple, Generic[Number, Code]):
    """Results of hips: float64 arrays of the shape to which the measurements broadcast, or floats for one hip.

    What there is not is NaN.
    """

    rWb: Number
    """Resultant hip force over body weight; no unit."""
    thetaR: Number
    """Inclination of that force from the vertical, degrees."""
    thetaPol: Number
    """Position of the stress pole, degrees, positive lateral of the vertical."""
    pmaxWb: Number
    """Peak contact stress over body weight, 1/m²."""
    pmax: Number
    """Peak contact stress, Pa; NaN where the body weight is not known."""
    status: Code
    """`Status`; for arrays an array of uint8."""


@dataclasses.dataclass(frozen=True)
class ResultUncertainty:
    """How sure one result is, in the unit of the result."""

    estimate: float
    """What `compute` gives for the values."""
    u: float
    """Standard uncertainty; NaN when the model refused any trial."""
    low: float
    """Lower end of the interval; NaN when the model refused more than 0.2 % of the trials."""
    high: float
    """Upper end of the interval, likewise."""
    budget: dict[str, float]
    """The part of each reading in the variance; empty when not asked for, or without u."""


@dataclasses.dataclass(frozen=True)
class HipUncertainty:
    """How sure the results of one hip are."""

    status: Status
    """Of the values; if not OK, there are no results."""
    trials: int
    """Trials that were run; 0 if the hip has no results."""
    ok: int
    """Trials for which the model has an answer."""
    settled: bool
    """False when `trials` was "auto" and the intervals still moved at the last trial."""
    rWb: ResultUncertainty | None
    thetaR: ResultUncertainty | None
    thetaPol: ResultUncertainty | None
    pmaxWb: ResultUncertainty | None
    pmax: ResultUncertainty | None
    """None when the body weight is not known."""
