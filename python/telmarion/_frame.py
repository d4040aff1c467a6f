"""Hips given as a pandas table, by the rules of `telmarion-batch`."""
from __future__ import annotations

import warnings
from typing import TYPE_CHECKING, Any, Sequence

import numpy as np
import numpy.typing as npt

from . import _core
from ._hips import Status, threads_from
from ._numbers import Floats, as_floats

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


def compute_frame(df: pd.DataFrame, *, threads: int | None = None) -> pd.DataFrame:
    """Add the results to a table of hips.

    Parameters
    ----------
    df : pandas.DataFrame
        One hip a row, of any number of rows. Columns are found by their names, in any order and among
        others, in upper or lower case: `lizm`, `xizm`, `zizm`, `Cizm`, `Hizm` (cm), `zasuk`, `thetaCE`
        (degrees), `headRadius` (m) and `bodyWeight` (kg, may be missing). A name may hold another unit:
        ``lizm[mm]``, ``headRadius (cm)``, ``thetaCE[rad]``.
    threads : int, optional
        Most threads to compute in; by default as many as there are processors.

    Returns
    -------
    pandas.DataFrame
        A new table with the columns of `df`, its index, and `rWb`, `thetaR` (degrees), `thetaPol`
        (degrees), `pmaxWb` (1/m²), `pmax` (Pa; all float64) and `status` behind them: "ok",
        "refused: …" where the model has no answer, "error: …" where a measurement cannot be used. What
        cannot be computed is NaN.

    Raises
    ------
    TypeError
        For a column of measurements that does not hold numbers.
    ValueError
        For a measurement that has no column, two columns or an unknown unit, and for a column that has
        the name of a result.

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
    """
    most = threads_from(threads)
    columns, units, remarks = _core.find_columns(_header(df))
    for remark in remarks:
        warnings.warn(remark, UserWarning, stacklevel=2)
    arrays = [None if field is None else as_floats(f"the column {df.columns[field]}", df.iloc[:, field])
              for field in columns]
    *results, status = _core.compute_columns(arrays, units, len(df), most)
    added = dict(zip(_core.RESULTS, results))
    added[_core.STATUS_COLUMN] = _texts(status, arrays, units)
    return df.assign(**added)
