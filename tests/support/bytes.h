#pragma once

namespace zavra::test
{

using Octets = std::vector<unsigned char>;
using Lines = std::vector<std::string>;
using testing::AllOf, testing::ElementsAre, testing::EndsWith, testing::HasSubstr, testing::MatchesRegex, testing::Not,
    testing::StartsWith;

/// Bytes of hexadecimal text; blanks do not count.
Octets octets(const std::string& hexadecimal);
std::string hexadecimal(const Octets& bytes);

/// CRC-8 with polynomial 0x07 computed bit by bit, independently of the library.
unsigned char reference_crc(const Octets& bytes);
Octets with_crc(Octets bytes);

enum class Layer { device, api };

/// The values of a payload in the order in which they travel, independently of the library's codec and field lists:
/// its bytes, and the record that holds them by position, member after member as they are declared.
class Payload
{
public:
    Payload& u8(unsigned int value) { return both(static_cast<unsigned char>(value)); }
    Payload& u32(unsigned int value) { return both(value); }
    Payload& u64(unsigned long long value) { return both(value); }
    Payload& f32(float value) { return both(value); }
    Payload& f64(double value) { return both(value); }
    /// The floats first, first + 1, ... last.
    Payload& f32_range(int first, int last);
    /// Floats that count up from `first`, and for each place in the API's record which of them it holds.
    Payload& f32_permuted(int first, const std::vector<int>& in_api);
    /// The API declares q_3 before q_2.
    Payload& quaternion(int first) { return f32_permuted(first, {0, 2, 1, 3}); }
    /// Characters padded with NUL, and with `terminator` more of them in the record.
    Payload& text(const std::string& characters, std::size_t size, std::size_t terminator = 0);
    /// A byte whose member is of another type.
    template <class Member>
    Payload& u8_as(unsigned int value)
    {
        return wire({static_cast<unsigned char>(value)}).member(static_cast<Member>(value));
    }
    /// Bytes without a member, and a member without bytes.
    Payload& wire(const Octets& bytes);
    template <class T>
    Payload& member(T value)
    {
        append(device_, bytes_of(value), sizeof value);
        append(api_, bytes_of(value), sizeof value);
        return *this;
    }

    bool empty() const { return hexadecimal_.empty(); }
    const std::string& hexadecimal() const { return hexadecimal_; }

    template <class Record>
    Record record(Layer layer) const
    {
        Record record;
        std::ranges::transform(image(layer, sizeof record, alignof(Record)), bytes_at(record),
                               [](int byte) { return static_cast<unsigned char>(byte); });
        return record;
    }

    template <class Record>
    void expect(Layer layer, Record record) const
    {
        Image expected = image(layer, sizeof record, alignof(Record)), found = expected;
        for (std::size_t i = 0; i < found.size(); ++i)
            found[i] = found[i] < 0 ? found[i] : bytes_at(record)[i];
        EXPECT_EQ(found, expected);
    }

private:
    using Image = std::vector<int>; ///< of a record; padding is negative

    template <class T>
    static unsigned char* bytes_at(T& value)
    {
        static_assert(std::is_trivially_copyable_v<T>);
        return reinterpret_cast<unsigned char*>(&value);
    }
    template <class T>
    static Octets bytes_of(T value)
    {
        return {bytes_at(value), bytes_at(value) + sizeof value};
    }
    template <class T>
    Payload& both(T value)
    {
        const Octets bytes = bytes_of(value);
        wire(std::endian::native == std::endian::little ? Octets(bytes.rbegin(), bytes.rend()) : bytes);
        return member(value);
    }
    static void append(Image& image, const Octets& bytes, std::size_t alignment);
    /// @throws std::logic_error when the values do not fill a record of this size
    const Image& image(Layer layer, std::size_t size, std::size_t alignment) const;

    std::string hexadecimal_;
    Image device_, api_;
};

/// The message of the exception that an action throws, or "nothing was thrown".
template <class Exception, class Action>
std::string message_of(Action&& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return "nothing was thrown";
}

}
