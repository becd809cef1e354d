#pragma once

#include "records.h"

#include <pybind11/pybind11.h>

#include <concepts>
#include <limits>
#include <span>
#include <string>
#include <type_traits>

namespace py = pybind11;

/// Values between Python and C++: numbers are checked against the range of their type, texts against their room.
namespace zavra::python
{

struct Layout;

/// What a number of milliseconds is.
enum class Role { plain, epoch, interval };

/// How a value in memory is read and written by Python.
struct Type
{
    py::object (*get)(void* value, py::handle owner);
    void (*set)(void* value, py::handle from);
    std::size_t size;
    const char* format;  ///< of a number, for numpy; null for anything else
    const Type* element; ///< of an array; null for anything else
    std::size_t count;
    const Layout* layout; ///< of a record; null for anything else
};

/// @throws py::value_error, py::type_error
unsigned long long whole_number(py::handle from, unsigned long long max);
long long whole_number(py::handle from, long long min, long long max);
double real_number(py::handle from, double max);
std::string text(py::handle from, std::size_t max_size);

/// Milliseconds of a number, a datetime (for a time since 1970) or a timedelta (for an interval).
unsigned long long milliseconds(py::handle from, Role role);

/// A new record made of a dictionary or, for a vector, of a sequence.
py::object made_of(const Layout& layout, py::handle from);

py::object array_view(void* data, const Type& type, py::handle owner);
void set_array(void* data, const Type& type, py::handle from);
py::str latin_1(const char* data, std::size_t size);

/// As a dictionary has it: records are dictionaries, arrays lists.
py::object plain_value(const Type& type, void* value, py::handle owner);

/// A number as briefly as it is read back the same.
std::string repr_of(const Type& type, void* value, py::handle owner);

/// The IntEnum of an enumeration.
template <class E>
inline PyObject* enumeration_of = nullptr;

/// The IntEnum's member, or the number where there is none.
py::object enumerator(PyObject* enumeration, unsigned int value);

template <class T>
concept Api_Enumeration = std::is_enum_v<T> && std::same_as < std::underlying_type_t<T>,
unsigned int > ;

struct Member
{
    const char* name;
    const Type& type;
    std::size_t offset;
    Role role;
    const char* doc;
};

/// What is known of a record at run time.
struct Layout
{
    std::string name;
    std::span<const Member> members;
    bool is_vector = false; ///< all components of one kind
    PyObject* type = nullptr;
};

template <class R>
inline Layout layout_of;

/// Where there is no member but one of the records, record.h says how.
template <class T>
struct Access;

template <class T>
requires std::is_arithmetic_v<T>
struct Access<T>
{
    static py::object get(void* value, py::handle) { return py::cast(*static_cast<T*>(value)); }
    static void set(void* value, py::handle from)
    {
        using Limits = std::numeric_limits<T>;
        if constexpr (std::same_as<T, bool>)
            *static_cast<T*>(value) = from.cast<bool>();
        else if constexpr (std::is_floating_point_v<T>)
            *static_cast<T*>(value) = static_cast<T>(real_number(from, Limits::max()));
        else if constexpr (std::is_signed_v<T>)
            *static_cast<T*>(value) = static_cast<T>(whole_number(from, Limits::min(), Limits::max()));
        else
            *static_cast<T*>(value) = static_cast<T>(whole_number(from, Limits::max()));
    }
    static constexpr char format[] = {py::format_descriptor<T>::c, '\0'};
    static inline const Type type{&get, &set, sizeof(T), format, nullptr, 0, nullptr};
};

template <Api_Enumeration E>
struct Access<E>
{
    static py::object get(void* value, py::handle) { return enumerator(enumeration_of<E>, *static_cast<E*>(value)); }
    static void set(void* value, py::handle from)
    {
        *static_cast<E*>(value) = static_cast<E>(whole_number(from, 0xFFULL));
    }
    static inline const Type type{&get, &set, sizeof(E), nullptr, nullptr, 0, nullptr};
};

template <>
struct Access<std::string>
{
    static py::object get(void* value, py::handle) { return py::str(*static_cast<std::string*>(value)); }
    static void set(void* value, py::handle from)
    {
        *static_cast<std::string*>(value) = text(from, std::numeric_limits<std::size_t>::max());
    }
    static inline const Type type{&get, &set, sizeof(std::string), nullptr, nullptr, 0, nullptr};
};

/// A text that ends with a zero.
template <std::size_t size>
struct Access<char[size]>
{
    static py::object get(void* value, py::handle) { return latin_1(static_cast<char*>(value), size); }
    static void set(void* value, py::handle from)
    {
        std::string characters = text(from, size - 1);
        characters.resize(size);
        characters.copy(static_cast<char*>(value), size);
    }
    static inline const Type type{&get, &set, size, nullptr, nullptr, 0, nullptr};
};

template <class T, std::size_t size>
struct Access<T[size]>
{
    static py::object get(void* value, py::handle owner) { return array_view(value, type, owner); }
    static void set(void* value, py::handle from) { set_array(value, type, from); }
    static inline const Type type{&get, &set, sizeof(T[size]), nullptr, &Access<T>::type, size, nullptr};
};

template <class T>
constexpr const Type& type_of()
{
    return Access<T>::type;
}

void add_values(py::module_& module);

}

namespace pybind11::detail
{

/// An enumerator is any number that travels as one byte.
template <zavra::python::Api_Enumeration E>
struct type_caster<E>
{
    PYBIND11_TYPE_CASTER(E, const_name("int"));

    bool load(handle from, bool)
    {
        zavra::python::Access<E>::set(&value, from);
        return true;
    }
    static handle cast(E from, return_value_policy, handle)
    {
        return zavra::python::enumerator(zavra::python::enumeration_of<E>, from).release();
    }
};

/// Records are taken as they are, or made of what a constructor takes.
template <class R>
requires(zavra::python::is_api_record<R>) class type_caster<R> : public type_caster_base<R>
{
public:
    bool load(handle from, bool convert)
    {
        if (isinstance<R>(from))
            return type_caster_base<R>::load(from, convert);
        made_ = zavra::python::made_of(zavra::python::layout_of<R>, from);
        return type_caster_base<R>::load(made_, convert);
    }

private:
    object made_;
};

}
