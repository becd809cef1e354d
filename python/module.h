#pragma once

#include <pybind11/pybind11.h>

/// The parts of the module beside the unit and its records.
namespace zavra::python
{

void add_protocol(pybind11::module_& module);
void add_bench(pybind11::module_& module);

}
