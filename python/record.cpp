#include "record.h"

namespace zavra::python
{

namespace
{

char* place(const Layout& layout, py::handle object, const Member& member)
{
    return static_cast<char*>(address_of(layout, object)) + member.offset;
}

/// Runs something that may find a value wrong; the message says whose.
template <class Action>
void naming(const std::string& name, Action&& action)
{
    try {
        action();
    } catch (const py::value_error& error) {
        throw py::value_error(name + ": " + error.what());
    } catch (const py::type_error& error) {
        throw py::type_error(name + ": " + error.what());
    } catch (py::error_already_set& error) {
        py::raise_from(error, error.type().ptr(), (name + ": " + py::str(error.value()).cast<std::string>()).c_str());
        throw py::error_already_set();
    }
}

void set(const Member& member, void* value, py::handle from)
{
    naming(member.name, [&] {
        if (member.role == Role::plain)
            member.type.set(value, from);
        else
            *static_cast<unsigned long long*>(value) = milliseconds(from, member.role);
    });
}

py::object property(const py::object& get, const py::object& set, const char* doc)
{
    return py::module_::import("builtins").attr("property")(get, set, py::none(), doc);
}

template <class Function>
void method(const py::object& type, const char* name, const Function& function, const char* doc = "")
{
    py::setattr(type, name, py::cpp_function(function, py::name(name), py::is_method(type), doc));
}

void add_member(const py::object& type, const Layout& layout, const Member& member)
{
    const py::cpp_function get([&](py::handle self) { return member.type.get(place(layout, self, member), self); });
    const py::cpp_function put(
        [&](py::handle self, py::handle value) { set(member, place(layout, self, member), value); });
    py::setattr(type, member.name, property(get, put, member.doc));
    if (member.role != Role::epoch)
        return;
    std::string name = member.name;
    if (name.ends_with("_msec"))
        name.resize(name.size() - 5);
    const py::object number = get;
    const py::cpp_function get_utc([number](py::handle self) {
        return py::module_::import("velm_zavra._times").attr("to_datetime")(number(self));
    });
    py::setattr(type, (name + "_utc").c_str(), property(get_utc, put, "The same as a datetime in UTC."));
}

bool is_timed(const Layout& layout)
{
    return layout.members.front().role != Role::plain &&
           std::string(layout.members.front().name).ends_with("time_msec");
}

/// Frames of telemetry come one after the other.
void add_order(const py::object& type, const Layout& layout)
{
    const auto time = [&layout](py::handle record) {
        return *reinterpret_cast<unsigned long long*>(place(layout, record, layout.members.front()));
    };
    const auto compare = [&](const char* name, auto relation) {
        method(type, name, [&layout, time, relation](py::handle self, py::handle other) -> py::object {
            if (!py::isinstance(other, layout.type))
                return py::reinterpret_borrow<py::object>(Py_NotImplemented);
            return py::bool_(relation(time(self), time(other)));
        });
    };
    compare("__lt__", std::less<>());
    compare("__gt__", std::greater<>());
    compare("__le__", std::less_equal<>());
    compare("__ge__", std::greater_equal<>());
}

void add_components(const py::object& type, const Layout& layout)
{
    const auto values = [&layout](py::handle self) {
        py::tuple all(layout.members.size());
        for (std::size_t i = 0; i < layout.members.size(); ++i)
            all[i] = layout.members[i].type.get(place(layout, self, layout.members[i]), self);
        return all;
    };
    method(type, "__len__", [&layout](py::handle) { return layout.members.size(); });
    method(type, "__iter__", [values](py::handle self) { return py::iter(values(self)); });
    method(type, "__getitem__",
           [values](py::handle self, const py::object& index) -> py::object { return values(self)[index]; });
    if (in_order(layout))
        return;
    method(type, "__array__",
           [values](py::handle self, const py::args& arguments, const py::kwargs& named) -> py::object {
               const py::object array = py::module_::import("numpy").attr("array");
               return arguments.empty() && named.empty() ? array(values(self), "f4")
                                                         : array(values(self), *arguments, **named);
           });
}

const Member& member_named(const Layout& layout, const std::string& name)
{
    for (const Member& member : layout.members)
        if (member.name == name)
            return member;
    throw py::type_error(layout.name + " has no \"" + name + '"');
}

}

void* address_of(const Layout& layout, py::handle object)
{
    if (!py::isinstance(object, layout.type))
        throw py::type_error("expected " + layout.name + ", got " + py::repr(object).cast<std::string>());
    return reinterpret_cast<py::detail::instance*>(object.ptr())->get_value_and_holder().value_ptr();
}

bool in_order(const Layout& layout)
{
    std::size_t end = 0;
    for (const Member& member : layout.members) {
        if (member.offset != end)
            return false;
        end += member.type.size;
    }
    return true;
}

void fill(const Layout& layout, void* record, const py::args& arguments, const py::kwargs& named)
{
    py::sequence values = arguments;
    if (layout.is_vector && arguments.size() == 1 && named.empty() && PySequence_Check(arguments[0].ptr()) != 0) {
        values = py::list(arguments[0]);
        if (values.size() != layout.members.size())
            throw py::value_error(layout.name + ": expected " + std::to_string(layout.members.size()) +
                                  " components, got " + std::to_string(values.size()));
    }
    if (values.size() > layout.members.size())
        throw py::type_error(layout.name + " has " + std::to_string(layout.members.size()) + " members");
    char* const start = static_cast<char*>(record);
    for (std::size_t i = 0; i < values.size(); ++i)
        set(layout.members[i], start + layout.members[i].offset, py::object(values[i]));
    for (const auto& [key, value] : named) {
        const Member& member = member_named(layout, key.cast<std::string>());
        if (&member < layout.members.data() + values.size())
            throw py::type_error(layout.name + ": \"" + member.name + "\" is given twice");
        set(member, start + member.offset, value);
    }
}

py::object made_of(const Layout& layout, py::handle from)
{
    const py::handle type = layout.type;
    if (py::isinstance<py::dict>(from))
        return type(**py::reinterpret_borrow<py::dict>(from));
    if (layout.is_vector && PySequence_Check(from.ptr()) != 0)
        return type(from);
    throw py::type_error("expected " + layout.name + ", got " + py::repr(from).cast<std::string>());
}

void add_common(const py::object& type, const Layout& layout)
{
    py::setattr(type, "__module__", py::str("velm_zavra"));
    for (const Member& member : layout.members)
        add_member(type, layout, member);
    py::tuple names(layout.members.size());
    for (std::size_t i = 0; i < layout.members.size(); ++i)
        names[i] = layout.members[i].name;
    py::setattr(type, "__match_args__", names);

    const auto to_dict = [&layout](py::handle self) {
        py::dict dictionary;
        for (const Member& member : layout.members)
            dictionary[member.name] = plain_value(member.type, place(layout, self, member), self);
        return dictionary;
    };
    method(type, "to_dict", to_dict,
           "Members by name; records inside are dictionaries, arrays lists, times milliseconds.");
    const py::cpp_function from_dict(
        [](const py::object& cls, const py::dict& dictionary) { return cls(**dictionary); }, py::name("from_dict"),
        "The reverse of to_dict(). What is not named is zero.");
    py::setattr(type, "from_dict", py::module_::import("builtins").attr("classmethod")(from_dict));
    const auto replace = [](const py::object& self, const py::kwargs& changes) {
        py::object copy = self.attr("__copy__")();
        for (const auto& [name, value] : changes) {
            if (!py::hasattr(copy, name))
                throw py::type_error("there is no \"" + name.cast<std::string>() + '"');
            py::setattr(copy, name, value);
        }
        return copy;
    };
    method(type, "replace", replace, "A copy with other values of the members that are named.");
    method(type, "__reduce__", [to_dict](const py::object& self) {
        return py::make_tuple(py::type::of(self).attr("from_dict"), py::make_tuple(to_dict(self)));
    });
    method(type, "__repr__", [&layout](py::handle self) {
        std::string text = layout.name + '(';
        for (const Member& member : layout.members)
            text += (&member == layout.members.data() ? "" : ", ") + std::string(member.name) + '=' +
                    repr_of(member.type, place(layout, self, member), self);
        return text + ')';
    });
    if (is_timed(layout))
        add_order(type, layout);
    if (layout.is_vector)
        add_components(type, layout);
}

py::object make_enumeration(py::module_& module, const char* name, const char* doc, const Enumerators& enumerators)
{
    py::dict values;
    for (const auto& [enumerator_name, value] : enumerators)
        values[enumerator_name] = value;
    py::object type = py::module_::import("enum").attr("IntEnum")(name, values, py::arg("module") = "velm_zavra");
    type.attr("__doc__") = doc;
    module.attr(name) = type;
    return type;
}

}
