"""Hip force and contact stress from a radiograph of the pelvis.

The same model as in the programs ``telmarion`` and ``telmarion-batch``, with the same digits. Names and
units are those of a cohort's columns: lengths in cm, angles in degrees, the radius of the head in m, the
body weight in kg.

>>> import telmarion
>>> hip = telmarion.compute(lizm=10.4, xizm=0.5, zizm=6.0, Cizm=4.4, Hizm=16.0, zasuk=0.0, thetaCE=30.0,
...                         headRadius=0.025, bodyWeight=70.0)
>>> round(hip.rWb, 3), round(hip.pmax)
(2.812, 2066848)

`compute` takes numbers and NumPy arrays, `compute_frame` takes pandas tables, and `uncertainty` carries
reading errors through the model. TELMARION is made for research and teaching; it is not a certified
medical device.
"""
from ._core import __version__
from ._frame import compute_frame
from ._hips import compute
from ._results import HipResults, HipUncertainty, ResultUncertainty, Status
from ._uncertainty import uncertainty

__all__ = [
    "HipResults",
    "HipUncertainty",
    "ResultUncertainty",
    "Status",
    "__version__",
    "compute",
    "compute_frame",
    "uncertainty",
]
