#pragma once

#include "output.h"

#include <iosfwd>
#include <string>

/// Readings for the databases that dashboards are drawn from.
namespace zavra::tools
{

/// Where a reading comes from.
struct Source
{
    std::string name; ///< the words of the command: "telemetry attitude"
    std::string bus;
    unsigned int address;
};

/// One line of InfluxDB's line protocol: measurement zavra_NAME, tags bus and address, a field for each value. The line
/// protocol has neither NaN nor infinity nor integers above 2^63 - 1: such values are left out, and the line where
/// nothing is left.
void write_influx(std::ostream& out, const Source& source, const Answer& answer, unsigned long long epoch_msec);

/// Prometheus' text format: a gauge zavra_NAME_VALUE for each number with labels bus and address, elements of arrays
/// with a label index; the texts are labels of zavra_NAME_info; zavra_NAME_read_time_seconds is when that was.
void write_prometheus(std::ostream& out, const Source& source, const Answer& answer, unsigned long long epoch_msec);

}
