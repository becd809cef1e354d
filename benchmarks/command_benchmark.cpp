// CPU cost of commands over a bus in memory, beside the same work written by hand in the style of C: fixed buffers, a
// CRC table, shifts. Both go through the same platform calls, waits and debug stream included.

#include "quiet_platform.h"

#include <VELM_API_Debug.h>
#include <VELM_I2C_DEV.h>
#include <ZAVRA_100.h>

#include <benchmark/benchmark.h>
#include <cstring>
#include <unistd.h>

namespace
{

const unsigned char zeros[513] = {}; // a valid response of any size: the CRC of zeros is zero

unsigned char crc_table[256];

void fill_crc_table()
{
    for (int i = 0; i < 256; ++i) {
        int v = i;
        for (int k = 0; k < 8; ++k)
            v = (v & 0x80) != 0 ? (v << 1) ^ 0x07 : v << 1;
        crc_table[i] = static_cast<unsigned char>(v);
    }
}

unsigned char crc_of(const unsigned char* data, int length)
{
    unsigned char crc = 0;
    for (int i = 0; i < length; ++i)
        crc = crc_table[crc ^ data[i]];
    return crc;
}

unsigned int u32_at(const unsigned char* p)
{
    return static_cast<unsigned int>(p[0]) << 24 | static_cast<unsigned int>(p[1]) << 16 |
           static_cast<unsigned int>(p[2]) << 8 | p[3];
}

unsigned long long u64_at(const unsigned char* p)
{
    return static_cast<unsigned long long>(u32_at(p)) << 32 | u32_at(p + 4);
}

float f32_at(const unsigned char* p)
{
    const unsigned int bits = u32_at(p);
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

bool listening()
{
    return static_cast<bool>(VELM_API_Debug::dout(3));
}

void send_by_hand(VELM_I2C_DEV& bus, unsigned int command, const unsigned char* payload, int length)
{
    unsigned char frame[517];
    frame[0] = static_cast<unsigned char>(command >> 8);
    frame[1] = static_cast<unsigned char>(command);
    frame[2] = static_cast<unsigned char>(length);
    frame[3] = static_cast<unsigned char>(length >> 8);
    std::memcpy(frame + 4, payload, static_cast<std::size_t>(length));
    frame[4 + length] = crc_of(frame, 4 + length);
    benchmark::DoNotOptimize(listening());
    bus.I2CWriteByteArray(frame, length + 5);
    usleep(100000);
}

bool read_by_hand(VELM_I2C_DEV& bus, unsigned int command, unsigned char* response, int length)
{
    send_by_hand(bus, command, zeros, 0);
    benchmark::DoNotOptimize(listening());
    bus.I2CReadByteArray(response, length + 1);
    for (int line = 0; line < 5; ++line) // the dump, two lines on the CRC, a title, the record
        benchmark::DoNotOptimize(listening());
    return crc_of(response, length) == response[length];
}

void set_by_hand(benchmark::State& state)
{
    fill_crc_table();
    VELM_I2C_DEV bus;
    unsigned long long value = 0;
    for (auto _ : state) {
        unsigned char payload[8];
        for (int i = 0; i < 8; ++i)
            payload[i] = static_cast<unsigned char>(value >> (56 - 8 * i));
        send_by_hand(bus, 0x0210, payload, 8);
        ++value;
    }
}

void set_by_library(benchmark::State& state)
{
    ZAVRA_100 device;
    unsigned long long value = 0;
    for (auto _ : state)
        device.Set_Epoch_Time(value++);
}

void get_96_by_hand(benchmark::State& state)
{
    fill_crc_table();
    zavra::test::answer_with(zeros);
    VELM_I2C_DEV bus;
    for (auto _ : state) {
        unsigned char response[97];
        ZAVRA_100_Standard_Telemetry t;
        if (!read_by_hand(bus, 0x0221, response, 96))
            state.SkipWithError("CRC");
        t.system_time_msec = u64_at(response);
        t.epoch_time_msec = u64_at(response + 8);
        unsigned int* registers = &t.livelyhood_register;
        for (int i = 0; i < 20; ++i)
            registers[i] = u32_at(response + 16 + 4 * i);
        benchmark::DoNotOptimize(t);
    }
}

void get_96_by_library(benchmark::State& state)
{
    zavra::test::answer_with(zeros);
    ZAVRA_100 device;
    for (auto _ : state) {
        ZAVRA_100_Standard_Telemetry t;
        device.Get_Standard_Telemetry(&t);
        benchmark::DoNotOptimize(t);
    }
}

void get_172_by_hand(benchmark::State& state)
{
    fill_crc_table();
    zavra::test::answer_with(zeros);
    VELM_I2C_DEV bus;
    for (auto _ : state) {
        unsigned char response[173];
        ZAVRA_100_Sensor_Telemetry t;
        if (!read_by_hand(bus, 0x0222, response, 172))
            state.SkipWithError("CRC");
        t.epoch_time_msec = u64_at(response);
        t.index_of_active_startracker = response[8];
        float* quaternion = &t.quaternion_attitude_1_bf;
        for (int i = 0; i < 4; ++i)
            quaternion[i] = f32_at(response + 9 + 4 * i);
        t.index_of_active_gyro = response[25];
        float* gyro = &t.measured_angular_velocity_gyro_1_x_radps;
        for (int i = 0; i < 12; ++i)
            gyro[i] = f32_at(response + 26 + 4 * i);
        t.index_of_active_magnetometer = response[74];
        float* magnetometer = &t.measured_magnetic_field_magnetometer_1_x_t;
        for (int i = 0; i < 6; ++i)
            magnetometer[i] = f32_at(response + 75 + 4 * i);
        float* sun = &t.measured_sun_vector_sunsensor_1_x;
        for (int i = 0; i < 18; ++i)
            sun[i] = f32_at(response + 99 + 4 * i);
        t.temperature_degc = response[171];
        benchmark::DoNotOptimize(t);
    }
}

void get_172_by_library(benchmark::State& state)
{
    zavra::test::answer_with(zeros);
    ZAVRA_100 device;
    for (auto _ : state) {
        ZAVRA_100_Sensor_Telemetry t;
        device.Get_Sensor_Telemetry(&t);
        benchmark::DoNotOptimize(t);
    }
}

}

BENCHMARK(set_by_hand);
BENCHMARK(set_by_library);
BENCHMARK(get_96_by_hand);
BENCHMARK(get_96_by_library);
BENCHMARK(get_172_by_hand);
BENCHMARK(get_172_by_library);
