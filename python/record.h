#pragma once

#include "value.h"

#include <VELM_ZAVRA_VALUES.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

/// Records as classes of Python. What they have in common works on a table of members; what is instantiated for each
/// record is little.
namespace zavra::python
{

/// The record in a Python object of the class.
void* address_of(const Layout& layout, py::handle object);

/// Components lie in memory in the order of the members.
bool in_order(const Layout& layout);

/// Sets members as a constructor is asked to: in their order, by name, or a vector's from one sequence.
void fill(const Layout& layout, void* record, const py::args& arguments, const py::kwargs& named);

/// Attributes, and the methods that all records have.
void add_common(const py::object& type, const Layout& layout);

/// One record as numbers for numpy, which shares the memory.
py::buffer_info buffer_of(const Layout& layout, void* record);

/// All zero; there is one whose constructor leaves members as they were.
template <class R>
std::unique_ptr<R> blank()
{
    auto record = std::make_unique<R>();
    if constexpr (std::is_trivially_copyable_v<R>)
        std::memset(static_cast<void*>(record.get()), 0, sizeof(R));
    return record;
}

template <class R, std::size_t count>
void add_record(py::module_& module, const char* name, const char* doc, const Member (&members)[count], bool is_vector)
{
    Layout& layout = layout_of<R>;
    layout = {name, members, is_vector};
    py::class_<R> type(module, name, doc, py::buffer_protocol());
    layout.type = type.ptr();
    type.def(py::init([&layout](const py::args& arguments, const py::kwargs& named) {
        auto record = blank<R>();
        fill(layout, record.get(), arguments, named);
        return record;
    }));
    type.def("__eq__", [](const R& a, const py::object& b) -> py::object {
        if (!py::isinstance<R>(b))
            return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        return py::bool_(a == b.cast<const R&>());
    });
    type.def("__copy__", [](const R& record) { return R(record); });
    type.def("__deepcopy__", [](const R& record, const py::dict&) { return R(record); });
    if (is_vector && in_order(layout))
        type.def_buffer([&layout](R& record) { return buffer_of(layout, &record); });
    add_common(type, layout);
}

/// How a record is a member of another one, or an element of an array.
template <class R>
struct Access
{
    static py::object get(void* value, py::handle owner)
    {
        return py::cast(static_cast<R*>(value), py::return_value_policy::reference_internal, owner);
    }
    static void set(void* value, py::handle from)
    {
        if (!py::isinstance<R>(from)) {
            const py::object made = made_of(layout_of<R>, from);
            *static_cast<R*>(value) = made.cast<const R&>();
        } else {
            *static_cast<R*>(value) = from.cast<const R&>();
        }
    }
    static inline const Type type{&get, &set, sizeof(R), nullptr, nullptr, 0, &layout_of<R>};
};

using Enumerators = std::initializer_list<std::pair<const char*, unsigned int>>;

/// Makes an IntEnum.
py::object make_enumeration(py::module_& module, const char* name, const char* doc, const Enumerators& enumerators);

template <class E>
void add_enumeration(py::module_& module, const char* name, const char* doc, const Enumerators& enumerators)
{
    enumeration_of<E> = make_enumeration(module, name, doc, enumerators).release().ptr();
}

void add_records_0(py::module_& module);
void add_records_1(py::module_& module);
void add_records_2(py::module_& module);

}
