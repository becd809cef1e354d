#include "simulator/bench/control_server.h"
#include "tests/support/simulated_bus.h"

using namespace zavra;
using namespace zavra::test;

TEST_F(Bus_Test, a_control_request_is_done_at_once_and_as_a_whole_or_not_at_all)
{
    Test_Bench bench{clock, {.addresses = {10, 11}}};
    const auto answer = [&](const std::string& request) { return json::shown(Control_Server::answer(bench, request)); };
    clock.advance(Clock::Time(1000));
    EXPECT_THAT(answer(R"({"time": {"factor": 10, "advance": 60}, "fault": "crc", "probability": 0.5, "address": 11})"),
                AllOf(HasSubstr(R"({"time_msec":61000,"time_factor":10.0,"units":{"10":{"world":{"angular)"),
                      HasSubstr(R"("temperature_degc":21.0},"faults":{}},"11":{)"),
                      EndsWith(R"("faults":{"crc":0.5}}}})")));
    clock.advance(Clock::Time(100));
    answer(R"({"world": {"temperature_degc": -5}, "command": "Set_Epoch_Time", "arguments": {"epoch_time_msec": 7}})");
    for (const unsigned int address : {10U, 11U}) {
        EXPECT_EQ(bench.unit(address).world.temperature, -5);
        EXPECT_EQ(bench.unit(address).unit.telemetry.standard().epoch_time_msec, 7U);
    }

    const std::pair<const char*, const char*> refused[] = {
        {"{", "parse error"},
        {"[]", "request: expected an object"},
        {R"({"at": 1, "fault": "crc"})", "at: everything happens at once here"},
        {R"({"address": 12})", "address: there is no unit at 12"},
        {R"({"time": {"factor": 2}, "fault": "flood"})", "There is no fault"},
        {R"({"time": {"factor": 2, "advance": -1}})", "time.advance: expected a number of seconds"},
        {R"({"time": {"speed": 2}})", "time: there is no \"speed\""},
        {R"({"time": {"factor": "nan"}, "fault": "hang"})", "A time factor is a number"},
        {R"({"command": "Get_Gyro_Values", "arguments": {"index": 9}})", "the unit refused Get_Gyro_Values"},
    };
    for (const auto& [request, reason] : refused)
        EXPECT_THAT(Control_Server::answer(bench, request).value("error", ""), HasSubstr(reason)) << request;
    EXPECT_EQ(bench.time.factor(), 10);
}

TEST_F(Connected_Test, a_temperature_travels_as_one_byte)
{
    const std::pair<float, float> cases[] = {{-5.4F, 251}, {200, 200},         {300, 255},
                                             {-200, 128},  {std::nanf(""), 0}, {-0.4F, 0}};
    for (const auto& [measured, received] : cases) {
        world.temperature = measured;
        ZAVRA_100_Sensor_Telemetry telemetry;
        device.Get_Sensor_Telemetry(&telemetry);
        EXPECT_EQ(telemetry.temperature_degc, received) << measured;
    }
}
