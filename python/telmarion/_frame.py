"""Hips given as a pandas table, by the rules of `telmarion-batch`."""
from __future__ import annotations

import warnings
from typing import TYPE_CHECKING, Any, Literal, Sequence, overload

import numpy as np
import numpy.typing as npt

from . import _core
from ._defaults import Defaults, defaults_from
from ._hips import threads_from
from ._numbers import Floats, as_floats
from ._results import Status
from ._uncertainty import SOURCES, points_from, settings_from

if TYPE_CHECKING:
    import pandas as pd  # type: ignore[import]


def _header(df: pd.DataFrame) -> list[bytes]:
    """The names of the columns; surrogates, which no name of ours has, stay what they are."""
    if df.columns.nlevels != 1:
        raise ValueError("df has columns of several levels; the table must have one name a column")
    return [str(name).encode("utf-8", "surrogatepass") for name in df.columns]


def _texts(status: npt.NDArray[np.uint8], arrays: list[Floats | None],
           units: Sequence[_core.Unit]) -> npt.NDArray[Any]:
    """The status of each row in words; a row at fault names its columns."""
    texts = np.array(_core.STATUS_TEXTS, dtype=object)[status]
    for row in np.flatnonzero(status >= Status.MISSING):
        texts[row] = _core.faults_of_row(arrays, units, int(row))
    return texts


def _floats(df: pd.DataFrame, fields: Sequence[int | None]) -> list[Floats | None]:
    return [None if field is None else as_floats(f"the column {df.columns[field]}", df.iloc[:, field])
            for field in fields]


def _counts(counts: npt.NDArray[np.int64], missing: npt.NDArray[np.bool_]) -> Any:
    """Whole numbers, of which some are missing, in the same type for every table."""
    from pandas.arrays import IntegerArray  # type: ignore[import]
    return IntegerArray(counts, missing)


def _budget(df: pd.DataFrame, parts: Floats) -> pd.DataFrame:
    """A row for each hip and result, a column for each reading."""
    import pandas
    budget = pandas.DataFrame(parts.reshape(-1, len(SOURCES)), columns=[*SOURCES],
                              index=df.index.repeat(len(_core.RESULTS)))
    budget.insert(0, "result", np.tile(np.array(_core.RESULTS, dtype=object), len(df)))
    return budget


def _with_uncertainties(df: pd.DataFrame, arrays: list[Floats | None], units: Sequence[_core.Unit],
                        found: _core._FoundUncertainties, defaults: _core.Defaults, threads: int,
                        points: _core.Points, settings: _core.Settings) -> tuple[pd.DataFrame, Floats]:
    """The table with the results, and the parts of the budgets."""
    fields, error_units, factor, factor_u, names = found
    *numbers, trials, ok, parts, status = _core.compute_uncertain_columns(
        arrays, units, _floats(df, fields), error_units, _floats(df, [factor, factor_u]), defaults, len(df),
        threads, points, settings)
    nothing = trials == 0
    columns = [*numbers, _counts(trials, nothing), _counts(ok, nothing), np.array(status, dtype=object)]
    return df.assign(**dict(zip([*_core.RESULTS, *names, _core.STATUS_COLUMN], columns))), parts


@overload
def compute_frame(df: pd.DataFrame, *, threads: int | None = None, defaults: Defaults | None = None,
                  coverage: float = 0.95, trials: int | str = 8192, seed: int = 1,
                  budget: Literal[False] = False) -> pd.DataFrame: ...
@overload
def compute_frame(df: pd.DataFrame, *, threads: int | None = None, defaults: Defaults | None = None,
                  coverage: float = 0.95, trials: int | str = 8192, seed: int = 1,
                  budget: Literal[True]) -> tuple[pd.DataFrame, pd.DataFrame]: ...
def compute_frame(df: pd.DataFrame, *, threads: int | None = None, defaults: Defaults | None = None,
                  coverage: float = 0.95, trials: int | str = 8192, seed: int = 1,
                  budget: bool = False) -> Any:
    """Add the results to a table of hips, and how sure they are if it has columns of uncertainties.

    Parameters
    ----------
    df : pandas.DataFrame
        One hip a row, of any number of rows. Columns are found by their names, in any order and among
        others, in upper or lower case: `lizm`, `xizm`, `zizm`, `Cizm`, `Hizm` (cm), `zasuk`, `thetaCE`
        (degrees), `headRadius` (m) and `bodyWeight` (kg, may be missing). A name may hold another unit:
        ``lizm[mm]``, ``headRadius (cm)``, ``thetaCE[rad]``. A column such as ``lizm_u[mm]``, ``thetaCE_u`` or
        ``bodyWeight_u`` holds the standard uncertainties of a measurement, in its unit or in their own; NaN
        is 0. `magnification` is the factor by which the picture enlarges all lengths and the radius, and
        `magnification_u` its standard uncertainty; with it, lengths are as on the picture and are divided
        by it.
    threads : int, optional
        Most threads to compute in; by default as many as there are processors.
    defaults : mapping or pandas.DataFrame, optional
        Standard uncertainties for the rows that have none: ``{"thetaCE": 2.5, "headRadius[mm]": 0.5,
        "bodyWeight": (0.5, "uniform"), "magnification": 0.03}``, or a table with the columns `column`, `u`
        and, if wanted, `unit` and `distribution`, as the file of ``telmarion-batch --uncertainty`` has them.
        Without a unit u is in the first one above. The distribution, "normal", "uniform" or "triangular", is
        that of all rows.
    coverage : float, optional
        Probability of the intervals, above 0 and below 1. This and what follows is of use only with
        uncertainties.
    trials : int or "auto", optional
        Trials of each hip, as in `uncertainty`.
    seed : int, optional
        Chooses the points, as in `uncertainty`. The intervals of a hip depend on its own row and the seed
        alone, not on the other rows or their order.
    budget : bool, optional
        Whether to find the part of each reading in the variance of each result, which takes a run for each.

    Returns
    -------
    pandas.DataFrame
        A new table with the columns of `df`, its index, and `rWb`, `thetaR` (degrees), `thetaPol`
        (degrees), `pmaxWb` (1/m²), `pmax` (Pa; all float64) and `status` behind them: "ok",
        "refused: …" where the model has no answer, "error: …" where a measurement cannot be used. What
        cannot be computed is NaN. With uncertainties there are, before `status`, also `rWb_u`, `rWb_lo95`,
        `rWb_hi95` (the standard uncertainty and the ends of the interval; ``_lo90`` at a coverage of 0.9),
        the same of every result, and `mc_trials` and `mc_ok`, the trials and those with an answer (Int64).
        Where trials are refused, "ok: …" in `status` says what is therefore missing.
    pandas.DataFrame
        With `budget` a second table, with a row for each hip and result: the index of the hip, `result`, and
        for each reading and `magnification` its part, NaN where there is no uncertainty.

    Raises
    ------
    TypeError
        For a column of measurements or uncertainties that does not hold numbers.
    ValueError
        For a measurement that has no column, two columns or an unknown unit, for a column that has the
        name of a result, for defaults that name no reading or a unit that does not fit, for a budget without
        any uncertainty, and for a coverage, trials or seed out of range. An uncertainty below 0, or one in
        a unit that does not fit, is an error of its row alone, as is a magnification that is not above 0.

    Warns
    -----
    UserWarning
        About a column that is not used although its name is close to one that is (``body_weight``).

    Examples
    --------
    >>> import pandas as pd
    >>> df = pd.DataFrame({"hip": ["A", "B"], "lizm[mm]": [104, 96], "xizm": [0.5, 0.1],
    ...                    "zizm": [6.0, 5.4], "Cizm": [4.4, 4.7], "Hizm": [16.0, 14.6], "zasuk": 0,
    ...                    "thetaCE": [30, 12], "headRadius": 0.025, "bodyWeight": [70, None]})
    >>> print(telmarion.compute_frame(df)[["hip", "rWb", "pmax", "status"]].round(2).to_string())
      hip   rWb        pmax status
    0   A  2.81  2066847.58     ok
    1   B  2.79         NaN     ok

    With a reading error of 2.5° of the centre-edge angle:

    >>> print(telmarion.compute_frame(df.assign(thetaCE_u=2.5))[["hip", "pmaxWb", "pmaxWb_lo95", "pmaxWb_hi95"]]
    ...       .round(0).to_string())
      hip  pmaxWb  pmaxWb_lo95  pmaxWb_hi95
    0   A  3007.0       2699.0       3483.0
    1   B  6141.0       4847.0       8223.0
    """
    most = threads_from(threads)
    settings, points = settings_from(coverage, trials, budget), points_from(seed)
    chosen = defaults_from(defaults)
    columns, units, uncertainties, remarks = _core.find_columns(_header(df), settings.coverage,
                                                                chosen is not None)
    for remark in remarks:
        warnings.warn(remark, UserWarning, stacklevel=2)
    arrays = _floats(df, columns)
    if uncertainties is not None:
        results, parts = _with_uncertainties(df, arrays, units, uncertainties, chosen or _core.Defaults([]),
                                             most, points, settings)
        return (results, _budget(df, parts)) if budget else results
    if budget:
        raise ValueError("there is no uncertainty to make a budget of: neither a column such as lizm_u nor "
                         "defaults")
    *numbers, status = _core.compute_columns(arrays, units, len(df), most)
    added = dict(zip(_core.RESULTS, numbers))
    added[_core.STATUS_COLUMN] = _texts(status, arrays, units)
    return df.assign(**added)
