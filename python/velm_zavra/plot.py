"""The main plots of a record, drawn with matplotlib, which has to be installed for them. Times are in minutes; where the
satellite is in the Earth's shadow, the background is grey."""
from __future__ import annotations

from collections.abc import Callable, Sequence
from typing import TYPE_CHECKING, Any

from .simulator import Record

if TYPE_CHECKING:
    from matplotlib.axes import Axes
    from matplotlib.figure import Figure


def rates(record: Record, axes: Axes | None = None) -> Axes:
    """The angular velocity about each body axis, true and, dotted, as the unit's software believes it."""
    import numpy

    axes = _axes(record, "rate, deg/s", axes)
    _lines(axes, record, numpy.degrees(record.vector("angular_velocity_radps")), ["x", "y", "z"])
    believed = record.vector("estimated_angular_velocity_radps")
    if numpy.isfinite(believed).any():
        _lines(axes, record, numpy.degrees(believed), ["x, believed", "y, believed", "z, believed"], linestyle=":")
    return axes


def wheels(record: Record, axes: Axes | None = None) -> Axes:
    """The speed of each wheel."""
    axes = _axes(record, "wheel speed, rad/s", axes)
    _lines(axes, record, record.vector("wheel_speed_radps"), list("xyzuvw"))
    return axes


def magnetorquers(record: Record, axes: Axes | None = None) -> Axes:
    """The dipole moment on each body axis."""
    axes = _axes(record, "dipole moment, A m²", axes)
    _lines(axes, record, record.vector("dipole_moment_am2"), ["x", "y", "z"])
    return axes


def pointing_error(record: Record, axes: Axes | None = None) -> Axes:
    """The angle to the target, as the unit's software believes it; nothing where it has no target."""
    import numpy

    axes = _axes(record, "pointing error, deg", axes)
    _lines(axes, record, numpy.degrees(record["pointing_error_rad"])[:, None], ["error"])
    return axes


def report(record: Record) -> Figure:
    """All of them in one figure, but for those that have nothing to show."""
    import matplotlib.pyplot
    import numpy

    plots: list[Callable[[Record, Any], Any]] = [rates, wheels, magnetorquers]
    if numpy.isfinite(record["pointing_error_rad"]).any():
        plots.insert(1, pointing_error)
    figure, axes = matplotlib.pyplot.subplots(len(plots), sharex=True, figsize=(9, 2.4 * len(plots)), layout="constrained")
    for plot, each in zip(plots, axes):
        plot(record, each)
        each.set_xlabel("time, min" if each is axes[-1] else "")
    return figure


def _axes(record: Record, label: str, axes: Axes | None) -> Axes:
    import numpy

    if axes is None:
        import matplotlib.pyplot

        axes = matplotlib.pyplot.subplots(layout="constrained")[1]
    axes.set_xlabel("time, min")
    axes.set_ylabel(label)
    axes.grid(alpha=0.3)
    minutes, dark = record["time_s"] / 60, record["sunlight"] < 0.5
    changes = numpy.flatnonzero(numpy.diff(dark.astype(int), prepend=0, append=0))
    for first, behind in changes.reshape(-1, 2):
        axes.axvspan(minutes[first], minutes[behind - 1], color="0.9")
    return axes


def _lines(axes: Axes, record: Record, values: Any, names: Sequence[str], **style: Any) -> None:
    axes.set_prop_cycle(None)  # the same colours for the same axes
    for column, name in enumerate(names[: values.shape[1]]):
        axes.plot(record["time_s"] / 60, values[:, column], label=name, linewidth=1, **style)
    axes.legend(fontsize="small", ncols=2)
