// Throughput of the codec and of the CRC in bytes per second.

#include "protocol/telemetry.h"

#include <ZAVRA_100.h>

#include <benchmark/benchmark.h>

namespace
{

template <class Record>
void unpack_record(benchmark::State& state)
{
    const unsigned char payload[zavra::wire_size<Record>] = {1, 2, 3};
    for (auto _ : state) {
        benchmark::DoNotOptimize(payload);
        benchmark::DoNotOptimize(zavra::unpack<Record>(payload));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * sizeof payload));
}

template <class Record>
void pack_record(benchmark::State& state)
{
    Record record{};
    unsigned char payload[zavra::wire_size<Record>];
    for (auto _ : state) {
        benchmark::DoNotOptimize(record);
        zavra::pack(payload, record);
        benchmark::DoNotOptimize(payload);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * sizeof payload));
}

void crc(benchmark::State& state)
{
    ZAVRA_100 device;
    unsigned char data[512] = {1, 2, 3};
    for (auto _ : state) {
        benchmark::DoNotOptimize(data);
        benchmark::DoNotOptimize(device.crc8_ccitt(data, sizeof data));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * sizeof data));
}

}

BENCHMARK(unpack_record<ZAVRA_100_Sensor_Telemetry>);
BENCHMARK(pack_record<ZAVRA_100_Sensor_Telemetry>);
BENCHMARK(crc);
