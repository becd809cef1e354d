#include "record.h"

#include <charconv>
#include <cmath>

namespace zavra::python
{

namespace
{

/// Elements of a record's array. It lies in the record's memory, which it keeps alive.
struct Array
{
    py::object owner;
    char* data;
    const Type* type;

    const Type& element() const { return *type->element; }
    std::size_t size() const { return type->count; }
    void* at(std::size_t index) const { return data + index * element().size; }

    void* at_signed(py::ssize_t index) const
    {
        const auto count = static_cast<py::ssize_t>(size());
        if (index < -count || index >= count)
            throw py::index_error("there are " + std::to_string(count) + " elements");
        return at(static_cast<std::size_t>(index < 0 ? index + count : index));
    }
};

/// What numpy is told: numbers, also those in arrays of arrays and of vectors.
py::buffer_info numbers(void* data, const Type& type)
{
    std::vector<py::ssize_t> shape;
    const Type* inner = &type;
    while (inner->format == nullptr) {
        const Layout* const layout = inner->layout;
        if (layout != nullptr && layout->is_vector && in_order(*layout)) {
            shape.push_back(static_cast<py::ssize_t>(layout->members.size()));
            inner = &layout->members.front().type;
        } else if (inner->element != nullptr) {
            shape.push_back(static_cast<py::ssize_t>(inner->count));
            inner = inner->element;
        } else {
            throw py::buffer_error("it has no numbers that lie side by side");
        }
    }
    std::vector<py::ssize_t> strides(shape.size());
    auto stride = static_cast<py::ssize_t>(inner->size);
    for (std::size_t i = shape.size(); i-- > 0; stride *= shape[i])
        strides[i] = stride;
    return {data,   static_cast<py::ssize_t>(inner->size), inner->format, static_cast<py::ssize_t>(shape.size()), shape,
            strides};
}

py::list elements(const Array& array)
{
    py::list list;
    for (std::size_t i = 0; i < array.size(); ++i)
        list.append(array.element().get(array.at(i), array.owner));
    return list;
}

py::list plain_list(const Array& array)
{
    py::list list;
    for (std::size_t i = 0; i < array.size(); ++i)
        list.append(plain_value(array.element(), array.at(i), array.owner));
    return list;
}

std::string repr_of_array(const Array& array)
{
    std::string text;
    for (std::size_t i = 0; i < array.size(); ++i)
        text += (i == 0 ? "[" : ", ") + repr_of(array.element(), array.at(i), array.owner);
    return text + ']';
}

[[noreturn]] void out_of_range(py::handle from, const std::string& range)
{
    throw py::value_error("expected " + range + ", got " + py::repr(from).cast<std::string>());
}

/// The number as Python's int; a real number is none.
py::object as_int(py::handle from)
{
    PyObject* const number = PyNumber_Index(from.ptr());
    if (number == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::object>(number);
}

std::string whole_numbers(const std::string& min, const std::string& max)
{
    return "a whole number from " + min + " to " + max;
}

}

unsigned long long whole_number(py::handle from, unsigned long long max)
{
    const py::object number = as_int(from);
    const unsigned long long value = PyLong_AsUnsignedLongLong(number.ptr());
    const bool failed = PyErr_Occurred() != nullptr;
    PyErr_Clear();
    if (failed || value > max)
        out_of_range(from, whole_numbers("0", std::to_string(max)));
    return value;
}

long long whole_number(py::handle from, long long min, long long max)
{
    const py::object number = as_int(from);
    int overflow = 0;
    const long long value = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
    if (overflow != 0 || value < min || value > max)
        out_of_range(from, whole_numbers(std::to_string(min), std::to_string(max)));
    return value;
}

double real_number(py::handle from, double max)
{
    const double value = PyFloat_AsDouble(from.ptr());
    if (PyErr_Occurred() != nullptr)
        throw py::error_already_set();
    if (std::isfinite(value) && std::abs(value) > max)
        out_of_range(from, "a number up to " + py::repr(py::float_(max)).cast<std::string>());
    return value;
}

std::string text(py::handle from, std::size_t max_size)
{
    if (!py::isinstance<py::str>(from))
        throw py::type_error("expected a text, got " + py::repr(from).cast<std::string>());
    const auto bytes = py::reinterpret_steal<py::bytes>(PyUnicode_AsLatin1String(from.ptr()));
    if (!bytes)
        throw py::error_already_set();
    std::string characters = bytes;
    if (characters.size() > max_size)
        out_of_range(from, "at most " + std::to_string(max_size) + " characters");
    return characters;
}

unsigned long long milliseconds(py::handle from, Role role)
{
    if (role != Role::plain && !PyIndex_Check(from.ptr())) {
        const char* const convert = role == Role::epoch ? "epoch_msec" : "interval_msec";
        const py::object number = py::module_::import("velm_zavra._times").attr(convert)(from);
        return whole_number(number, std::numeric_limits<unsigned long long>::max());
    }
    return whole_number(from, std::numeric_limits<unsigned long long>::max());
}

py::object enumerator(PyObject* enumeration, unsigned int value)
{
    const py::object member = py::handle(enumeration).attr("_value2member_map_").attr("get")(value);
    return member.is_none() ? py::cast(value) : member;
}

py::str latin_1(const char* data, std::size_t size)
{
    const auto length = static_cast<py::ssize_t>(::strnlen(data, size));
    return py::reinterpret_steal<py::str>(PyUnicode_DecodeLatin1(data, length, nullptr));
}

py::object array_view(void* data, const Type& type, py::handle owner)
{
    return py::cast(Array{py::reinterpret_borrow<py::object>(owner), static_cast<char*>(data), &type});
}

void set_array(void* data, const Type& type, py::handle from)
{
    const auto values = py::reinterpret_steal<py::object>(PySequence_Fast(from.ptr(), "expected a sequence"));
    if (!values)
        throw py::error_already_set();
    if (py::len(values) != type.count)
        throw py::value_error("expected " + std::to_string(type.count) + " elements, got " +
                              std::to_string(py::len(values)));
    const Array array{{}, static_cast<char*>(data), &type};
    for (std::size_t i = 0; i < type.count; ++i)
        type.element->set(array.at(i), PySequence_Fast_GET_ITEM(values.ptr(), static_cast<py::ssize_t>(i)));
}

py::object plain_value(const Type& type, void* value, py::handle owner)
{
    if (type.element != nullptr)
        return plain_list({py::reinterpret_borrow<py::object>(owner), static_cast<char*>(value), &type});
    const py::object object = type.get(value, owner);
    return type.layout != nullptr ? object.attr("to_dict")() : object;
}

std::string repr_of(const Type& type, void* value, py::handle owner)
{
    if (type.format != nullptr && *type.format == 'f' && std::isfinite(*static_cast<float*>(value))) {
        char digits[32];
        return {digits, std::to_chars(digits, digits + sizeof digits, *static_cast<float*>(value)).ptr};
    }
    const py::object object = type.get(value, owner);
    if (py::hasattr(object, "_value_")) // an enumerator
        return py::str("{}.{}").format(py::type::of(object).attr("__name__"), object.attr("name"));
    return py::repr(object).cast<std::string>();
}

void add_values(py::module_& module)
{
    py::class_<Array> type(module, "Array",
                           "An array inside a record, of fixed length; numpy.asarray() shares its memory.",
                           py::buffer_protocol());
    type.def("__len__", &Array::size);
    type.def("__getitem__", [](const Array& array, py::ssize_t index) {
        return array.element().get(array.at_signed(index), array.owner);
    });
    type.def("__getitem__",
             [](const Array& array, const py::slice& slice) -> py::object { return elements(array)[slice]; });
    type.def("__iter__", [](const Array& array) { return py::iter(elements(array)); });
    type.def("__setitem__", [](const Array& array, py::ssize_t index, py::handle value) {
        array.element().set(array.at_signed(index), value);
    });
    type.def("__eq__", [](const Array& array, const py::object& other) {
        const py::object values = py::isinstance<Array>(other) ? plain_list(other.cast<const Array&>()) : other;
        return plain_list(array).equal(values);
    });
    type.def("__repr__", &repr_of_array);
    type.def("tolist", &plain_list, "A copy as a list.");
    type.def_buffer([](Array& array) { return numbers(array.data, *array.type); });
}

py::buffer_info buffer_of(const Layout& layout, void* record)
{
    py::buffer_info flat = numbers(record, {nullptr, nullptr, 0, nullptr, nullptr, 0, &layout});
    if (layout.members.size() != 9)
        return flat;
    return {record, flat.itemsize, flat.format, 2, {3, 3}, {3 * flat.itemsize, flat.itemsize}}; // a matrix
}

}
