#include "tests/support/simulated_bus.h"

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_REGISTER_MAP.h>

using namespace zavra::test;

struct Unit_Test : testing::Test
{
    Canned_World world;
    Manual_Clock clock;
    Simulated_Unit unit{world, clock};

    void request(const std::string& frame) { unit.write(with_crc(octets(frame))); }

    std::string reply(std::size_t size)
    {
        clock.advance(Clock::Time(20));
        Octets bytes(size);
        return unit.read(bytes) == 0 ? hexadecimal(bytes) : "not acknowledged";
    }

    std::string answer(const std::string& payload) { return hexadecimal(with_crc(octets(payload))); }
};

TEST_F(Unit_Test, a_reply_is_held_for_the_reads_that_follow_once_it_is_ready)
{
    EXPECT_EQ(reply(3), "ffffff") << "nothing was asked yet";

    request("0229 0400 12345678");
    request("0228 0000");
    clock.advance(Clock::Time(19));
    Octets early(5);
    EXPECT_EQ(unit.read(early), ENXIO);
    clock.advance(Clock::Time(1));
    EXPECT_EQ(reply(5), answer("12345678"));
    EXPECT_EQ(reply(7), answer("12345678") + "ffff") << "a read beyond the reply";
    EXPECT_EQ(reply(2), "1234");

    request("0229 0400 00000000");
    EXPECT_EQ(reply(2), "ffff") << "a setter has no reply, and the old one is gone";
}

TEST_F(Unit_Test, requests_that_are_not_right_are_counted_and_named_in_the_error_register)
{
    const std::tuple<const char*, Octets, unsigned int> cases[] = {
        {"wrong CRC", octets("023000000c"), System::bad_request_crc},
        {"unknown command", with_crc(octets("7fff0000")), System::unknown_command_or_wrong_length},
        {"header says more than there is", with_crc(octets("02100800010203")), System::unknown_command_or_wrong_length},
        {"length in the other byte order", with_crc(octets("0210000801020304 05060708")),
         System::unknown_command_or_wrong_length},
        {"no header", with_crc(octets("0230")), System::unknown_command_or_wrong_length},
        {"one byte", octets("01"), System::bad_request_crc},
    };
    unsigned int failed = 0;
    for (const auto& [what, frame, error] : cases) {
        SCOPED_TRACE(what);
        unit.parts.system.error_register = 0;
        EXPECT_EQ(unit.write(frame), 0);
        EXPECT_EQ(unit.parts.system.error_register, error);
        EXPECT_EQ(unit.parts.system.counters.failed_commands, ++failed);
        EXPECT_EQ(reply(1), "ff");
    }
    EXPECT_EQ(unit.write({}), 0) << "an empty write only asks whether somebody is there";
    EXPECT_EQ(unit.parts.system.counters.received_commands, failed);

    request("0230 0000");
    EXPECT_EQ(unit.parts.system.error_register, 0U);
}

TEST_F(Connected_Test, telemetry_and_registers_show_the_unit_and_its_world)
{
    advance(1000);
    device.Set_Epoch_Time(0x16000000000);
    advance(480);
    const auto standard = read(&ZAVRA_100::Get_Standard_Telemetry);
    EXPECT_EQ(std::tuple(standard.system_time_msec, standard.epoch_time_msec), std::tuple(1480U, 0x160000001e0U));
    world.temperature = 200.4F;
    device.Set_Active_Gyroscope(1);
    device.Set_DCDC_Configuration(0xDCDC);
    device.Set_System_Scheduler_Register(0x300);
    EXPECT_EQ(unit.parts.system.settings.dcdc_configuration, 0xDCDCU);

    testing::internal::CaptureStdout();
    VELM_ZAVRA_API api;
    testing::internal::GetCapturedStdout();
    EXPECT_STREQ(api.Get_Info_Frame().device_name, "ZAVRA-SIM");
    const auto sensor = api.Get_Sensor_Telemetry();
    EXPECT_EQ(std::tuple(+sensor.index_of_active_gyro, sensor.measured_angular_velocity_gyro_radps[2].y,
                         sensor.temperature_degc, api.Get_Attitude_Telemetry().measured_sun_vector_bf.z),
              std::tuple(1, world.angular_velocity.y, 200, world.sun.z));
    const unsigned int before = api.Get_Standard_Telemetry().number_of_received_commands;
    EXPECT_EQ(api.Get_All_Registers().registers[VELM_ZAVRA_API_SYSTEM_SCHEDULER_REGISTER].value, 0x300U);
    EXPECT_EQ(api.Get_Standard_Telemetry().number_of_received_commands, before + 2) << "one for all registers";

    const VELM_ZAVRA_REGISTER_MAP map(ZAVRA_TEST_DATA_DIR "/../../examples/zavra_sim_registers.ini");
    EXPECT_EQ(map.Decode(api.Get_Livelyhood_Register()).flags[0].name, "alive");
    std::tuple<unsigned int, const char*, Octets> cases[] = {
        {0, "bad_request_crc", octets("0221 0000 ff")},
        {1, "unknown_command_or_wrong_length", with_crc(octets("7fff 0000"))},
        {2, "refused_command", with_crc(octets("a107 0100 03"))},
    };
    for (auto& [bit, name, request] : cases) {
        device.I2CWriteByteArray(request.data(), static_cast<int>(request.size()));
        EXPECT_EQ(api.Check_Command_Errors(), bit < 2 ? 1U << bit : 0U);
        EXPECT_EQ(map.Decode(api.Get_System_Error_Register()).flags[bit].name, name);
        api.Clear_System_Error_Register();
        EXPECT_EQ(api.Get_System_Error_Register().value, 0U);
    }
}
