"""What a user's type checker is to find in the module; read by types_test.py, never run."""
from typing import Any

import numpy as np
import telmarion

hip = telmarion.compute(lizm=10.4, xizm=0.5, zizm=6, Cizm=4.4, Hizm=16, zasuk=0, thetaCE=30, headRadius=0.025)
reveal_type(hip.rWb)  # builtins.float
reveal_type(hip.status)  # telmarion._results.Status
reveal_type(hip.status.text)  # builtins.str
hips = telmarion.compute(lizm=np.ones(3), xizm=0.5, zizm=6, Cizm=4.4, Hizm=16, zasuk=0, thetaCE=[30, 20, 10],
                         headRadius=0.025, bodyWeight=70)
reveal_type(hips.pmax)  # numpy.ndarray[Any, numpy.dtype[numpy.floating[numpy._typing._64Bit]]]
reveal_type(hips.status)  # numpy.ndarray[Any, numpy.dtype[numpy.unsignedinteger[numpy._typing._8Bit]]]
sure = telmarion.uncertainty(lizm=10.4, xizm=0.5, zizm=6, Cizm=4.4, Hizm=16, zasuk=0, thetaCE=30,
                             headRadius=0.025, lizm_u=0.1, trials="auto")
reveal_type(sure.pmax)  # Union[telmarion._results.ResultUncertainty, None]
reveal_type(sure.trials)  # builtins.int
table: Any = None
reveal_type(telmarion.compute_frame(table, defaults={"thetaCE": 2.5, "lizm": (0.1, "uniform")}))  # Any
reveal_type(telmarion.compute_frame(table, budget=True))  # Tuple[Any, Any]
telmarion.compute(lism=10.4)  # error: No overload variant of "compute"
telmarion.uncertainty(lism=10.4)  # error: Unexpected keyword argument "lism"
