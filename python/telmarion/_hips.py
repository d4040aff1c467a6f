"""Hips given as numbers and arrays."""
from __future__ import annotations

import os
from typing import Any, Sequence, overload

import numpy as np
import numpy.typing as npt

from . import _core
from ._numbers import Floats, as_count, as_floats
from ._results import HipResults, Status

_MOST_THREADS = 1024
_STATUSES = tuple(Status)


def threads_from(threads: Any) -> int:
    """The argument `threads`; None is every processor that this process may use."""
    if threads is None:
        return min(len(os.sched_getaffinity(0)), _MOST_THREADS)
    return as_count("threads", threads, 1, _MOST_THREADS)


def _given(values: Sequence[Any]) -> list[Floats | None]:
    """The measurements as arrays, by their place; None for a body weight that is None."""
    arrays: list[Floats | None] = []
    for name, value in zip(_core.MEASUREMENTS, values):
        if value is None and name == "bodyWeight":
            arrays.append(None)
        elif value is None:
            raise TypeError(f"{name} must be a number or an array, not None")
        else:
            arrays.append(as_floats(name, value))
    return arrays


def _common_shape(arrays: Sequence[Floats | None]) -> tuple[int, ...]:
    shape: tuple[int, ...] = ()
    for name, array in zip(_core.MEASUREMENTS, arrays):
        if array is None:
            continue
        try:
            shape = np.broadcast_shapes(shape, array.shape)
        except ValueError:
            raise ValueError(f"{name} has the shape {array.shape}, which does not broadcast to {shape}, "
                             "the shape of those before it") from None
    return shape


def _compute_arrays(values: Sequence[Any], threads: int) -> HipResults[Any, Any]:
    arrays = _given(values)
    shape = _common_shape(arrays)
    flat = [None if a is None else np.broadcast_to(a, shape).reshape(-1) for a in arrays]
    count = int(np.prod(shape, dtype=np.int64))
    *results, status = _core.compute_columns(flat, None, count, threads)
    if shape == ():
        return HipResults._make([*(float(result[0]) for result in results), _STATUSES[status[0]]])
    return HipResults._make([*(result.reshape(shape) for result in results), status.reshape(shape)])


@overload
def compute(*, lizm: float, xizm: float, zizm: float, Cizm: float, Hizm: float,  # type: ignore[misc]
            zasuk: float, thetaCE: float, headRadius: float, bodyWeight: float | None = None,
            threads: int | None = None) -> HipResults[float, Status]: ...
@overload
def compute(*, lizm: npt.ArrayLike, xizm: npt.ArrayLike, zizm: npt.ArrayLike, Cizm: npt.ArrayLike,
            Hizm: npt.ArrayLike, zasuk: npt.ArrayLike, thetaCE: npt.ArrayLike,
            headRadius: npt.ArrayLike, bodyWeight: npt.ArrayLike | None = None,
            threads: int | None = None) -> HipResults[Floats, npt.NDArray[np.uint8]]: ...
def compute(*, lizm: Any, xizm: Any, zizm: Any, Cizm: Any, Hizm: Any, zasuk: Any, thetaCE: Any,
            headRadius: Any, bodyWeight: Any = None, threads: int | None = None) -> HipResults[Any, Any]:
    """Compute hip force and contact stress of one hip or many.

    Every measurement is a number or an array of numbers; arrays broadcast as NumPy's do. The frame is that
    of the radiograph, with its origin at the centre of the femoral head.

    Parameters
    ----------
    lizm : array_like
        Half of the distance between the two head centres, cm.
    xizm, zizm : array_like
        Vertical (positive downward) and horizontal (positive lateral) coordinate of the trochanter point,
        seen from the head centre, cm.
    Cizm : array_like
        Horizontal distance from the head centre to the most lateral point of the iliac crest, cm.
    Hizm : array_like
        Vertical distance from the head centre to the top of the iliac crest, cm.
    zasuk : array_like
        Rotation of the trochanter point about the head centre, degrees.
    thetaCE : array_like
        Centre-edge angle, degrees.
    headRadius : array_like
        Radius of the femoral head, m.
    bodyWeight : array_like, optional
        Body weight, kg. None, or NaN in an array, is not known; there is then no `pmax`.
    threads : int, optional
        Most threads to compute in; by default as many as there are processors.

    Returns
    -------
    HipResults
        `rWb`, `thetaR`, `thetaPol`, `pmaxWb`, `pmax` (float64) and `status` (uint8), each of the shape to
        which the measurements broadcast; floats and a `Status` when all of them are numbers.

    Raises
    ------
    TypeError
        For a measurement that is unknown, not given or no number.
    ValueError
        For shapes that do not broadcast, and a number of threads below 1.

    Notes
    -----
    A hip that the model refuses, or with a measurement that cannot be used, never raises: its `status`
    says what it is, and what cannot be computed is NaN. The GIL is released.

    The force follows McLeish and Charnley (1970) with the muscles of Dostal and Andrews (1981), the stress
    Brinckmann, Frobin and Hierholzer (1981).

    Examples
    --------
    >>> import numpy as np
    >>> hips = telmarion.compute(lizm=10.4, xizm=0.5, zizm=6.0, Cizm=4.4, Hizm=16.0, zasuk=0.0,
    ...                          thetaCE=np.array([30.0, 12.0, -20.0]), headRadius=0.025, bodyWeight=70.0)
    >>> hips.pmax.round(-3)
    array([2067000., 4190000.,      nan])
    >>> [telmarion.Status(s).text for s in hips.status]
    ['ok', 'ok', 'refused: no stress pole for this centre-edge angle and force']
    """
    values = (lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius, bodyWeight)
    most = 1 if threads is None else threads_from(threads)
    one = _core.compute_hip(values)
    if one is not None:
        return HipResults._make((*one[:-1], _STATUSES[one[-1]]))
    return _compute_arrays(values, most if threads is not None else threads_from(None))
