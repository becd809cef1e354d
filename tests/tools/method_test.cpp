#include "catalogue/commands.h"
#include "tests/support/simulated_bus.h"
#include "tools/arguments.h"
#include "tools/commands.h"
#include "tools/method.h"

using namespace zavra;
using namespace zavra::test;
using namespace zavra::tools;

/// A different value for every number, within every range that the unit checks.
static Json some_value(const Leaf& leaf, unsigned int number)
{
    if (leaf.path == "index" || leaf.path.ends_with("_index"))
        return 0U;
    switch (leaf.kind) {
    case Leaf::Kind::text:
        return "text " + std::to_string(number);
    case Leaf::Kind::bytes:
        return "0102";
    case Leaf::Kind::real:
        return number / 64.0;
    default:
        return number % 100 + 1;
    }
}

static Json some_arguments(const Method& method)
{
    Json arguments = Json::object();
    unsigned int number = 0;
    for (const Leaf& leaf : method.arguments)
        arguments[Json::json_pointer(leaf.pointer)] = some_value(leaf, ++number);
    if (method.name.starts_with("ZAVRA_")) // the transport itself: read the epoch time
        for (auto& [name, value] : arguments.items())
            value = name == "command" ? Json(0x0211)
                    : name == "data"  ? Json("")
                                      : Json(method.arguments.size() == 1 ? 1 : 8);
    return arguments;
}

TEST(Method_Test, the_table_has_every_command_of_the_protocol_once)
{
    std::multiset<std::string> expected;
    for (const Described_Command& command : described_commands())
        expected.insert(command.method);
    std::multiset<std::string> found;
    for (const Method& method : methods())
        if (method.identifier != 0)
            found.insert(method.name);
    EXPECT_EQ(found, expected);
}

TEST_F(Connected_Test, every_method_reaches_the_unit_and_what_a_setter_sets_its_getter_gets)
{
    testing::internal::CaptureStdout();
    std::set<std::string> different;
    for (const Method& method : methods()) {
        SCOPED_TRACE(method.name);
        if (method.name.find("Native") == std::string::npos) { // where one method reads what another left
            const auto guard = unit.lock();
            unit.reset();
        }
        const auto before = unit.parts.system.counters;
        const Json arguments = some_arguments(method);
        EXPECT_NO_THROW(method.call(device, arguments));
        const auto after = unit.parts.system.counters;
        // Native replies are read without a request.
        const bool is_native_read = method.name.find("Native_Get") != std::string::npos ||
                                    method.name.find("Read_Startracker_Native") != std::string::npos;
        EXPECT_EQ(after.received_commands - before.received_commands, is_native_read ? 0U : 1U);
        EXPECT_EQ(after.failed_commands, before.failed_commands);

        const Method* getter = method.name.starts_with("Set_") ? find_method('G' + method.name.substr(1)) : nullptr;
        if (getter == nullptr)
            continue;
        Arguments of_getter(getter->arguments);
        of_getter.complete_with(arguments);
        const Json results = getter->call(device, of_getter.json());
        Arguments back(method.arguments);
        back.complete_with(arguments.contains("index")  ? Json{{"index", 0}}
                           : arguments.contains("axis") ? Json{{"axis", arguments["axis"]}}
                                                        : Json::object());
        back.complete_with(results);
        if (!back.complete() || back.json() != arguments)
            different.insert(method.name);
    }
    const std::string printed = testing::internal::GetCapturedStdout();
    if (HasFailure())
        std::cout << printed; // failures were caught, too
    // Wheels take time to turn, and the angle step parameters are read as they have always been.
    EXPECT_THAT(different, testing::UnorderedElementsAre("Set_ReactionWheel_All_Speeds", "Set_ReactionWheel_Speed",
                                                         "Set_SingleAxis_AngleStep_Controller_Parameters"));
}

TEST(Method_Test, every_everyday_command_has_its_methods)
{
    for (const Everyday& each : everyday_commands()) {
        SCOPED_TRACE(each.words);
        for (const char* const name : {each.getter, each.setter})
            EXPECT_TRUE(name == nullptr || find_method(name) != nullptr) << name;
        EXPECT_TRUE(each.getter != nullptr || each.setter != nullptr);
    }
}
