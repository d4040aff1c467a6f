"""What callers give, as float64 arrays, or an error that names the argument."""
from __future__ import annotations

import operator
from typing import Any

import numpy as np
import numpy.typing as npt

Floats = npt.NDArray[np.float64]


def _of_objects(name: str, array: npt.NDArray[Any]) -> Floats:
    """Numbers that NumPy holds as objects, such as a list with None in it."""
    for value in array.flat:
        if isinstance(value, (bool, np.bool_)) or not isinstance(value, (int, float, np.number, type(None))):
            raise TypeError(f"{name} must hold numbers, not {type(value).__name__}")
    try:
        return array.astype(np.float64)
    except (OverflowError, TypeError) as trouble:
        raise ValueError(f"{name} holds a number that is not a float64: {trouble}") from None


def as_floats(name: str, value: Any) -> Floats:
    """The argument `name` as float64, any shape; what is missing is NaN.

    Raises TypeError for text, bools, complex numbers, dates and masked arrays, and ValueError for lists
    that are no array.
    """
    if isinstance(value, np.ma.MaskedArray):
        raise TypeError(f"{name} is a masked array; give filled(nan) instead")
    dtype = getattr(value, "dtype", None)
    # pandas' own types of numbers, which know missing ones. To ask NumPy's costs a copy.
    if not isinstance(dtype, np.dtype) and getattr(dtype, "kind", "O") in "iuf" and hasattr(value, "to_numpy"):
        return np.asarray(value.to_numpy(dtype=np.float64, na_value=np.nan), dtype=np.float64)
    try:
        array = np.asarray(value)
    except ValueError as trouble:
        raise ValueError(f"{name} is not an array of numbers: {trouble}") from None
    if array.dtype.kind == "O":
        return _of_objects(name, array)
    if array.dtype.kind not in "iuf":
        raise TypeError(f"{name} must hold numbers, not {array.dtype}")
    return array.astype(np.float64, copy=False)


def as_number(name: str, value: Any) -> float:
    """The argument `name` as one float; raises as `as_floats` does, and ValueError for arrays."""
    array = as_floats(name, value)
    if array.shape != ():
        raise ValueError(f"{name} must be one number, not an array of shape {array.shape}")
    return float(array)


def as_count(name: str, value: Any, least: int, most: int) -> int:
    """The argument `name` as an int from `least` to `most`."""
    if isinstance(value, (bool, np.bool_)):
        raise TypeError(f"{name} must be a whole number, not bool")
    try:
        count = operator.index(value)
    except TypeError:
        raise TypeError(f"{name} must be a whole number, not {type(value).__name__}") from None
    if not least <= count <= most:
        raise ValueError(f"{name} must be from {least} to {most}, not {count}")
    return count
