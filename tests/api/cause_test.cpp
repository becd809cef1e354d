#include "tests/support/cases.h"
#include "tests/support/temporary_directory.h"

#include <VELM_INIPARSER.h>
#include <VELM_ZAVRA_CAUSE.h>
#include <VELM_ZAVRA_REGISTER_MAP.h>

#include <stdexcept>

namespace zavra::test
{

static_assert(sizeof(VELM_ZAVRA_API_Exception) == sizeof(std::exception) + sizeof(std::string) &&
              sizeof(ZAVRA_100_Exception) == sizeof(std::exception) + sizeof(std::string));

namespace
{

/// "kind" or "kind errno"
std::string cause_of(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::exception& error) {
        const velm_zavra::Cause cause = velm_zavra::cause(error);
        return to_string(cause.kind) +
               (cause.error_number == 0 ? std::string() : ' ' + std::to_string(cause.error_number));
    }
    return "none";
}

/// What the platform does when it knows an errno.
template <class Exception>
void fail_with(int code)
{
    try {
        throw std::system_error(code, std::generic_category());
    } catch (...) {
        std::throw_with_nested(Exception("platform"));
    }
}

}

TEST_F(Operation_Test, every_failure_has_a_cause)
{
    const Temporary_Directory directory;
    const std::string bad_map = directory.file("map.ini", "?");
    const std::string no_file = directory.path + "/none";
    const auto with = [this](std::string Platform_Double::*failure, const std::function<void()>& action) {
        return [=, this] {
            platform = {};
            platform.*failure = "no reason";
            action();
        };
    };
    const std::pair<std::string, std::function<void()>> cases[] = {
        {"refused argument", [&] { device.Set_Active_Gyroscope(3); }},
        {"refused argument", [&] { api.Set_ReactionWheel_Speed(static_cast<VELM_ZAVRA_API_REACTIONWHEELS>(6), 0); }},
        {"refused argument",
         [&] {
             api.Start_Operation_Mode_Detumbling({2, 1});
         }},
        {"refused argument", [&] { api.Send_Startracker_Native_Command(nullptr, 1); }},
        {"refused argument", [&] { VELM_ZAVRA_REGISTER_MAP().Encode(VELM_ZAVRA_API_HIL_CONFIGURATION, {"x"}); }},
        {"damaged reply", [&] { api.Get_Epoch_Time(); }},
        {"damaged reply", [&] { device.ZAVRA_Startracker_Native_Get(nullptr, 0); }},
        {"bus", with(&Platform_Double::write_failure, [&] { api.Get_Epoch_Time(); })},
        {"bus", with(&Platform_Double::read_failure, [&] { api.Get_Epoch_Time(); })},
        {"bus", with(&Platform_Double::connect_failure, [] { VELM_ZAVRA_API(10, "i2c-0", "", false); })},
        {"file", with(&Platform_Double::section_failure, [&] { api.Initialize_Device(""); })},
        {"file 2", [&] { api.parse_TLE_file(const_cast<char*>(no_file.c_str())); }},
        {"file 2", [&] { VELM_ZAVRA_REGISTER_MAP{no_file}; }},
        {"file", [&] { VELM_ZAVRA_REGISTER_MAP{bad_map}; }},
        {"bus 5", [] { fail_with<VELM_I2C_DEV_Exception>(EIO); }},
        {"bus 22", [] { fail_with<VELM_I2C_DEV_Exception>(EINVAL); }},
        {"not acknowledged 6", [] { fail_with<VELM_I2C_DEV_Exception>(ENXIO); }},
        {"not acknowledged 121", [] { fail_with<VELM_I2C_DEV_Exception>(EREMOTEIO); }},
        {"timeout 110", [] { fail_with<VELM_I2C_DEV_Exception>(ETIMEDOUT); }},
        {"other", [] { fail_with<std::runtime_error>(EINVAL); }},
        {"other", [] { throw VELM_ZAVRA_API_Exception("an application's own"); }},
        {"other", [] { throw std::bad_alloc(); }},
    };
    for (const auto& [cause, action] : cases) {
        SCOPED_TRACE(cause);
        platform = {};
        testing::internal::CaptureStdout();
        EXPECT_EQ(cause_of(action), cause);
        EXPECT_EQ(cause_of([&] {
                      try {
                          action();
                      } catch (const std::exception&) {
                          std::throw_with_nested(std::runtime_error("pass over the ground station"));
                      }
                  }),
                  cause);
        testing::internal::GetCapturedStdout();
    }
}

}
