#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace zavra
{

/// Entry of the CRC-8 table: polynomial 0x07, start 0x00, no reflection, no final XOR (CRC-8/SMBUS).
constexpr unsigned char crc8_table_entry(unsigned char index)
{
    unsigned int value = index;
    for (int bit = 0; bit < 8; ++bit)
        value = (value & 0x80U) != 0 ? (value << 1U) ^ 0x07U : value << 1U;
    return static_cast<unsigned char>(value);
}

constexpr void fill_crc8_table(unsigned char (&table)[256])
{
    for (unsigned int i = 0; i < 256; ++i)
        table[i] = crc8_table_entry(static_cast<unsigned char>(i));
}

constexpr unsigned char crc8(const unsigned char (&table)[256], const unsigned char* data, std::size_t length,
                             unsigned char start = 0)
{
    unsigned char crc = start;
    for (std::size_t i = 0; i < length; ++i)
        crc = table[crc ^ data[i]];
    return crc;
}

struct Crc8_Table
{
    constexpr Crc8_Table() { fill_crc8_table(entries); }
    unsigned char entries[256]{};
};

inline constexpr Crc8_Table crc8_table;

constexpr unsigned char crc8(std::span<const unsigned char> bytes)
{
    return crc8(crc8_table.entries, bytes.data(), bytes.size());
}

}
