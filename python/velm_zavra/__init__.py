"""The ZAVRA-100 attitude determination and control unit.

    with velm_zavra.Unit() as unit:
        print(unit.get_attitude_telemetry().angular_velocity_radps)

velm_zavra.simulator has a unit without hardware, velm_zavra.protocol what travels, velm_zavra.plot charts.
"""
from ._core import *
from ._core import __version__ as __version__
from ._errors import *
from ._times import to_datetime as to_datetime
