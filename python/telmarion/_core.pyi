from typing import Any, ClassVar, Sequence

import numpy as np
import numpy.typing as npt

_Floats = npt.NDArray[np.float64]
_FoundResult = tuple[float, float | None, tuple[float, float] | None, list[float]]
_FoundUncertainties = tuple[list[int | None], list[Unit | None], int | None, int | None, list[str]]
_FoundUncertainty = tuple[int, int, bool, tuple[_FoundResult | None, ...]]

MEASUREMENTS: tuple[str, ...]
RESULTS: tuple[str, ...]
STATUS_COLUMN: str
STATUS_TEXTS: tuple[str, ...]
MAX_TRIALS: int
__version__: str

class HeaderError(ValueError): ...

class Unit:
    MILLIMETRE: ClassVar[Unit]
    CENTIMETRE: ClassVar[Unit]
    METRE: ClassVar[Unit]
    DEGREE: ClassVar[Unit]
    RADIAN: ClassVar[Unit]
    KILOGRAM: ClassVar[Unit]

class Distribution:
    __members__: ClassVar[dict[str, Distribution]]
    normal: ClassVar[Distribution]
    uniform: ClassVar[Distribution]
    triangular: ClassVar[Distribution]

class Points:
    def __init__(self, seed: int) -> None: ...

class Settings:
    def __init__(self, coverage: float, trials: int, automatic: bool, budget: bool) -> None: ...
    @property
    def coverage(self) -> float: ...

class Defaults:
    def __init__(self, rows: Sequence[tuple[bytes, bytes, float, Distribution]]) -> None: ...

def compute_hip(values: tuple[object, ...]) -> tuple[Any, ...] | None: ...
def compute_columns(arrays: Sequence[_Floats | None], units: Sequence[Unit] | None, count: int,
                    threads: int) -> tuple[Any, ...]: ...
def faults_of_row(arrays: Sequence[_Floats | None], units: Sequence[Unit], row: int) -> str: ...
def find_columns(names: Sequence[bytes], coverage: float,
                 defaults: bool) -> tuple[list[int | None], list[Unit], _FoundUncertainties | None, list[str]]: ...
def compute_uncertain_columns(arrays: Sequence[_Floats | None], units: Sequence[Unit],
                              errors: Sequence[_Floats | None], error_units: Sequence[Unit | None],
                              magnification: Sequence[_Floats | None], defaults: Defaults, count: int,
                              threads: int, points: Points, settings: Settings) -> tuple[Any, ...]: ...
def compute_uncertainty(values: Sequence[float | None], errors: Sequence[float],
                        magnification: tuple[float, float] | None,
                        distributions: Sequence[Distribution], points: Points,
                        settings: Settings) -> tuple[int, _FoundUncertainty | None]: ...
