#include "module.h"
#include "unit.h"

#include <VELM_ZAVRA_VALUES.h>

PYBIND11_MODULE(_core, module)
{
    using namespace zavra::python;
    py::options options;
    options.disable_function_signatures();
    module.doc() = "What velm_zavra is made of, in C++.";
    module.attr("__version__") = VELM_ZAVRA_VERSION_STRING;
    add_failures();
    add_values(module);
    add_records_0(module);
    add_records_1(module);
    add_records_2(module);
    add_register_map(module);
    Unit_Class unit(module);
    add_operations_0(unit);
    add_operations_1(unit);
    add_operations_2(unit);
    py::list names;
    for (const auto& [name, value] : py::dict(module.attr("__dict__")))
        if (py::isinstance<py::type>(value))
            names.append(name);
    module.attr("__all__") = names; // of velm_zavra; the rest is for its modules
    add_protocol(module);
    add_bench(module);
}
