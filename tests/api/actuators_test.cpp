#include "tests/support/operation_cases.h"

namespace zavra::test
{

namespace
{

using Api = VELM_ZAVRA_API;

const std::string one_two_three = "3f800000 40000000 40400000";
const std::string one_to_six = one_two_three + "40800000 40a00000 40c00000";
const std::string wheel_payload = Payload().f32_range(1, 4).u64(5).hexadecimal();
const std::string magnetorquer_payload = Payload().f32_range(1, 15).u64(16).u64(17).u64(18).hexadecimal();

constexpr VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT xyz{1, 2, 3};
constexpr VELM_ZAVRA_API_REACTIONWHEEL_TORQUE torque{1, 2, 3};
constexpr VELM_ZAVRA_API_REACTIONWHEEL_SPEEDS speeds{1, 2, 3, 4, 5, 6};
constexpr VELM_ZAVRA_API_SINGLE_REACTIONWHEEL_PARAMETERS wheel{1, 2, 3, 4, 5};
constexpr VELM_ZAVRA_API_MAGNETORQUER_PARAMETERS magnetorquers{{1, 2, 3}, {4, 5, 6}, {7, 8, 9, 10, 11, 12, 13, 14, 15},
                                                               16,        17,        18};

void expect_one_two_three(const VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT& vector)
{
    EXPECT_EQ(vector.x, 1);
    EXPECT_EQ(vector.y, 2);
    EXPECT_EQ(vector.z, 3);
}

/// What comes back for a payload goes out again as the same payload.
template <class Get, class Set>
void expect_round_trip(Platform_Double& platform, const std::string& payload, Get get, Set set)
{
    platform = {};
    platform.reply(payload);
    set(get());
    ASSERT_EQ(platform.frames().size(), 2U);
    EXPECT_THAT(platform.frames()[1], testing::HasSubstr(payload));
}

}

TEST_F(Operation_Test, reaction_wheel_operations)
{
    check({
        {[](Api& a) { a.Set_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEEL_5, 10.0F); }, "b001 0500 05 41200000", "",
         "set reaction wheel speed", "Set Reaction Wheel Speed"},
        {[](Api& a) { EXPECT_EQ(a.Get_ReactionWheel_Speed(VELM_ZAVRA_API_REACTIONWHEEL_4), 10.0F); }, "b002 0100 04",
         "41200000", "get reaction wheel speed", "Get Reaction Wheel Speed"},
        {[](Api& a) { a.Set_ReactionWheel_Parameters(VELM_ZAVRA_API_REACTIONWHEEL_3, wheel); },
         "b003 1900 03" + wheel_payload, "", "set reaction wheel single parameters",
         "Set All Reaction Wheel Parameters"},
        {[](Api& a) { a.Get_ReactionWheel_Parameters(static_cast<VELM_ZAVRA_API_REACTIONWHEELS>(9)); }, "b004 0100 09",
         wheel_payload, "get reaction wheel parameters", "Get All Reaction Wheel Parameters"},
        {[](Api& a) { a.Set_ReactionWheel_All_Update_Interval(1000); }, "b005 0800 00000000000003e8", "",
         "set reaction wheel all update interval", "Set All Reaction Wheel Update Interval"},
        {[](Api& a) { EXPECT_EQ(a.Get_ReactionWheel_All_Update_Interval(), 1000U); }, "b006 0000", "00000000000003e8",
         "get reaction wheel all update interval", "Get Reaction Wheel Speed"},
        {[](Api& a) { a.Enable_ReactionWheel_Idle_Mode(VELM_ZAVRA_API_REACTIONWHEEL_2); }, "b007 0100 02", "",
         "enable reaction wheel idle mode", "Enable Reaction Wheel Idle Mode"},
        {[](Api& a) { a.Set_ReactionWheel_All_Speeds(speeds); }, "b008 1800" + one_to_six, "",
         "set reaction all speeds", "Set All Reaction Wheel Speeds"},
        {[](Api& a) { a.Get_ReactionWheel_All_Speeds(); }, "b009 0000", one_to_six, "get reaction wheel all speeds",
         "Get Reaction Wheel Speed"},
        {[](Api& a) { a.Set_ReactionWheel_All_Parameters({}); }, "b00a 7000" + std::string(224, '0'), "",
         "set reaction wheel all parameters", "Set Parameters of All Reaction Wheels"},
        {[](Api& a) { a.Get_ReactionWheel_All_Parameters(); }, "b00b 0000", std::string(224, '0'),
         "get reaction wheel all parameters", "Get Parameters of All Reaction Wheels"},
        {[](Api& a) { a.Enable_ReactionWheel_All_Idle_Mode(); }, "b00c 0000", "", "enable all reaction wheel idle mode",
         "Enable All Reaction Wheel Idle Mode"},
        {[](Api& a) { a.Set_ReactionWheel_Torque_Target(torque); }, "b00d 0c00" + one_two_three, "",
         "set reaction wheel torque", "Set Reaction Wheel Torque Target"},
        {[](Api& a) { a.Get_ReactionWheel_Torque_Target(); }, "b00e 0000", one_two_three, "get reaction wheel torque",
         "Get Reaction Wheel Torque Target"},
    });
}

TEST_F(Operation_Test, magnetorquer_operations)
{
    check({
        {[](Api& a) { a.Set_Magnettorquer_All_Dipole_Moments(xyz); }, "b101 0c00" + one_two_three, "",
         "set all magnettorquer dipole moments", "Set Dipole Moment of All Magnetorquers"},
        {[](Api& a) { expect_one_two_three(a.Get_Magnettorquer_All_Dipole_Moments()); }, "b102 0000", one_two_three,
         "get all magnettorquer dipole moments", "Get Dipole Moments of All Magnetorquers"},
        {[](Api& a) { a.Suspend_All_Magnettorquers(); }, "b103 0000", "", "suspend all magnettorquers",
         "Suspend All Magnetorquers"},
        {[](Api& a) { a.Resume_All_Magnettorquers(); }, "b104 0000", "", "resume all magnettorquers",
         "Resume All Magnetorquers"},
        {[](Api& a) { a.Set_Magnettorquer_Parameters(magnetorquers); }, "b105 5400" + magnetorquer_payload, "",
         "set magnettorquer parameters", "Set Dipole Moment of All Magnetorquers"},
        {[](Api& a) { a.Get_Magnettorquer_Parameters(); }, "b106 0000", magnetorquer_payload,
         "get magnettorquer single parameters", "Get Magnetorquer Parameters"},
        {[](Api& a) { a.Set_Magnettorquer_All_Currents(xyz); }, "b107 0c00" + one_two_three, "",
         "set all magnettorquer currents", "Set Currents of All Magnetorquers"},
        // Dipole moments are what this one has always returned.
        {[](Api& a) { expect_one_two_three(a.Get_Magnettorquer_All_Currents()); }, "b102 0000", one_two_three,
         "get all magnettorquer currents", "Get Dipole Moments of All Magnetorquers"},
    });
}

TEST_F(Operation_Test, a_wheel_outside_the_enumeration_is_refused_by_the_device_layer)
{
    platform = {};
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>(
                  [&] { api.Set_ReactionWheel_Speed(static_cast<VELM_ZAVRA_API_REACTIONWHEELS>(6), 1); }),
              "Failed to set reaction wheel speed (Failed to Set Reaction Wheel Speed (unknown reaction wheel index))");
    EXPECT_TRUE(platform.events.empty());
}

TEST_F(Operation_Test, the_torque_distribution_matrix_is_transposed_both_ways)
{
    VELM_ZAVRA_API_REACTIONWHEEL_ARRAY_PARAMETERS parameters{};
    parameters.torque_distribution_matrix[4][1] = 2.0F;
    platform = {};
    api.Set_ReactionWheel_All_Parameters(parameters);
    const std::string payload = std::string(2 * 80, '0') + "40000000" + std::string(2 * 28, '0');
    EXPECT_EQ(platform.frames(), std::vector<std::string>{hexadecimal(with_crc(octets("b00a7000" + payload)))});

    platform = {};
    platform.reply(Payload().u32(1).u32(2).f32_range(3, 6).u64(7).u64(8).f32_range(9, 26).hexadecimal());
    parameters = api.Get_ReactionWheel_All_Parameters();
    EXPECT_EQ(parameters.motor_constant, 6.0F);
    EXPECT_EQ(parameters.max_valid_time_speed_measurement, 8U);
    for (int j = 0; j < 6; ++j)
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(parameters.torque_distribution_matrix[j][i], static_cast<float>(9 + 6 * i + j));
}

TEST_F(Operation_Test, actuator_records_come_back_as_they_went)
{
    constexpr auto index = VELM_ZAVRA_API_REACTIONWHEEL_0;
    expect_round_trip(
        platform, wheel_payload, [&] { return api.Get_ReactionWheel_Parameters(index); },
        [&](const auto& record) { api.Set_ReactionWheel_Parameters(index, record); });
    expect_round_trip(
        platform, Payload().f32_range(1, 6).hexadecimal(), [&] { return api.Get_ReactionWheel_All_Speeds(); },
        [&](const auto& record) { api.Set_ReactionWheel_All_Speeds(record); });
    expect_round_trip(
        platform, Payload().f32_range(1, 3).hexadecimal(), [&] { return api.Get_ReactionWheel_Torque_Target(); },
        [&](const auto& record) { api.Set_ReactionWheel_Torque_Target(record); });
    expect_round_trip(
        platform, Payload().u32(1).u32(2).f32_range(3, 6).u64(7).u64(8).f32_range(9, 26).hexadecimal(),
        [&] { return api.Get_ReactionWheel_All_Parameters(); },
        [&](const auto& record) { api.Set_ReactionWheel_All_Parameters(record); });
    expect_round_trip(
        platform, magnetorquer_payload, [&] { return api.Get_Magnettorquer_Parameters(); },
        [&](const auto& record) { api.Set_Magnettorquer_Parameters(record); });
}

}
