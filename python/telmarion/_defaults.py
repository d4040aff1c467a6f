"""The uncertainties of the hips of a table that have none of their own."""
from __future__ import annotations

from typing import TYPE_CHECKING, Any, Iterator, Mapping, Union

from . import _core
from ._numbers import as_number

if TYPE_CHECKING:
    import pandas as pd  # type: ignore[import]

Defaults = Union[Mapping[str, "float | tuple[float, str]"], "pd.DataFrame"]


def _of_mapping(given: Mapping[str, Any]) -> Iterator[tuple[str, str, Any, Any]]:
    for name, value in given.items():
        u, kind = value if isinstance(value, tuple) and len(value) == 2 else (value, "")
        yield str(name), "", u, kind


def _of_table(given: pd.DataFrame) -> Iterator[tuple[str, str, Any, Any]]:
    import pandas
    places = {str(name).strip().lower(): i for i, name in enumerate(given.columns)}
    if not {"column", "u"} <= places.keys():
        raise ValueError("defaults must have the columns column and u")
    for row in given.itertuples(index=False, name=None):
        cells = {name: "" if pandas.isna(row[place]) else row[place] for name, place in places.items()}
        yield str(cells["column"]), str(cells.get("unit", "")), row[places["u"]], cells.get("distribution", "")


def _distribution(name: str, kind: Any) -> _core.Distribution:
    word = str(kind).strip().lower() or "normal"
    if word not in _core.Distribution.__members__:
        raise ValueError(f"defaults: {name} must be normal, uniform or triangular, not {kind!r}")
    return _core.Distribution.__members__[word]


def _u(name: str, value: Any) -> float:
    u = as_number(f"defaults: {name}", value)
    if not 0.0 <= u <= 1e300:
        raise ValueError(f"defaults: {name} must be finite and at least 0, not {u}")
    return u


def defaults_from(given: Defaults | None) -> _core.Defaults | None:
    """The argument `defaults`."""
    if given is None:
        return None
    if not isinstance(given, Mapping) and not hasattr(given, "itertuples"):
        raise TypeError(f"defaults must be a mapping or a table, not {type(given).__name__}")
    rows = _of_mapping(given) if isinstance(given, Mapping) else _of_table(given)
    try:
        return _core.Defaults([(name.encode("utf-8", "surrogatepass"), unit.encode("utf-8", "surrogatepass"),
                                _u(name, u), _distribution(name, kind)) for name, unit, u, kind in rows])
    except _core.HeaderError as trouble:
        raise ValueError(f"defaults: {trouble}") from None
