#include "reservation.h"

#include <VELM_API_Debug.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <linux/futex.h>
#include <linux/time_types.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zavra::platform
{

namespace
{

/// Milliseconds of the clock that all programs of the computer share. It wraps, so that only differences count.
using Msec = std::uint32_t;

constexpr int reserved_msec = 150;
constexpr int longest_wait_msec = 5000;
constexpr int turn_msec = 20; // for one who waits to take the turn that is offered

Msec now()
{
    using namespace std::chrono;
    return static_cast<Msec>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

int since(Msec time, Msec present)
{
    return static_cast<int>(present - time);
}

/// A program and a time in one word, which is changed as a whole: a program may be stopped or killed between any two of
/// its instructions and leaves nothing half done, and nothing locked.
using Word = std::uint64_t;

constexpr Word word(std::uint32_t program, Msec time)
{
    return Word{program} << 32U | time;
}
constexpr std::uint32_t program_of(Word word)
{
    return static_cast<std::uint32_t>(word >> 32U);
}
constexpr Msec time_of(Word word)
{
    return static_cast<Msec>(word);
}

// A program: 22 bits of its process, which Linux never exceeds, and 10 that tell its objects apart.
constexpr unsigned int object_bits = 10;

std::uint32_t new_program()
{
    static std::atomic<std::uint32_t> next{std::random_device{}()};
    return static_cast<std::uint32_t>(::getpid()) << object_bits | (next++ & ((1U << object_bits) - 1));
}

/// Milliseconds that a reservation still lasts. What lies further ahead was left by a clock long ago.
int rest_of(Word holder, Msec present)
{
    const int rest = since(present, time_of(holder));
    return rest <= reserved_msec ? std::max(rest, 0) : 0;
}

bool is_waiting(Word waiting, Msec present)
{
    const int age = since(time_of(waiting), present);
    return waiting != 0 && age >= -reserved_msec && age <= longest_wait_msec;
}

bool before(Word a, Word b)
{
    const int later = since(time_of(a), time_of(b));
    return later > 0 || (later == 0 && program_of(a) < program_of(b));
}

void sleep_while(const std::atomic<std::uint32_t>& value, std::uint32_t expected, int msec)
{
    // The kernel's name for the 32 bits that this call takes on 32-bit computers, whatever time_t is.
    const __kernel_old_timespec time{msec / 1000, static_cast<long>(msec % 1000) * 1'000'000};
    ::syscall(SYS_futex, &value, FUTEX_WAIT, expected, &time, nullptr, 0);
}

}

/// The content of the file. Zeros are nobody's reservation.
struct Reservation::Shared
{
    std::atomic<std::uint32_t> turn; ///< counts what has been given back; those who wait sleep on it
    std::uint32_t unused;
    std::atomic<Word> holder;      ///< who has or had the device last, and until when
    std::atomic<Word> waiting[30]; ///< who waits, and since when

    static_assert(std::atomic<Word>::is_always_lock_free && sizeof(std::atomic<Word>) == sizeof(Word));

    bool anybody_waits(Msec present) const
    {
        return std::any_of(std::begin(waiting), std::end(waiting),
                           [&](const auto& place) { return is_waiting(place, present); });
    }

    void give_back(Word& mine, Msec present)
    {
        if (!holder.compare_exchange_strong(mine, word(program_of(mine), present)))
            return;
        ++turn;
        if (anybody_waits(present))
            ::syscall(SYS_futex, &turn, FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0);
    }

    /// One who waits; leaves the queue when it ends.
    class Place
    {
    public:
        Place(Shared& shared, Word self) : shared_(shared), self_(self) {}
        ~Place() { leave(); }
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

        /// Takes a place, unless it has one or all are taken.
        void enter(Msec present)
        {
            if (place_ != nullptr && *place_ == self_)
                return;
            for (auto& place : shared_.waiting) {
                Word other = place;
                if (!is_waiting(other, present) && place.compare_exchange_strong(other, self_)) {
                    place_ = &place;
                    return;
                }
            }
        }

        /// How many have waited longer.
        int number_before(Msec present) const
        {
            return static_cast<int>(
                std::count_if(std::begin(shared_.waiting), std::end(shared_.waiting), [&](const auto& place) {
                    const Word other = place;
                    return is_waiting(other, present) && before(other, self_);
                }));
        }

        /// Those who have waited longer had their turn and did not take it.
        void overtake()
        {
            for (auto& place : shared_.waiting)
                if (Word other = place; other != 0 && before(other, self_))
                    place.compare_exchange_strong(other, 0);
        }

    private:
        void leave()
        {
            if (Word mine = self_; place_ != nullptr)
                place_->compare_exchange_strong(mine, 0);
        }

        Shared& shared_;
        const Word self_;
        std::atomic<Word>* place_ = nullptr;
    };
};

Reservation::Reservation(std::string file) : file_(std::move(file)), program_(new_program())
{
    if (!map())
        VELM_API_Debug::dout(4) << "Cannot keep other programs from using the unit at the same time: " + file_ + " (" +
                                       std::generic_category().message(errno) + ")\n";
}

Reservation::~Reservation()
{
    unmap();
}

bool Reservation::map()
{
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    // First without O_CREAT, which the kernel refuses for another user's file where everybody may make files.
    File_Descriptor file(uninterrupted([&] { return ::open(file_.c_str(), flags); }));
    if (!file && errno == ENOENT) {
        file = File_Descriptor(uninterrupted([&] { return ::open(file_.c_str(), flags | O_CREAT, 0666); }));
        if (file)
            ::fchmod(file.get(), 0666); // whatever the umask
    }
    if (!file)
        return false;
    // Memory behind a hole in a file may turn out to be missing when it is written.
    if (const int error = ::posix_fallocate(file.get(), 0, sizeof(Shared)); error != 0) {
        errno = error;
        return false;
    }
    void* const memory = ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    if (memory == MAP_FAILED)
        return false;
    shared_ = static_cast<Shared*>(memory);
    descriptor_ = std::move(file);
    return true;
}

void Reservation::unmap()
{
    if (shared_ == nullptr)
        return;
    ::munmap(shared_, sizeof(Shared));
    descriptor_ = File_Descriptor();
    shared_ = nullptr;
}

/// Whether somebody removed the file or cut it, so that others would not meet us there.
bool Reservation::replaced() const
{
    struct stat status;
    return ::fstat(descriptor_.get(), &status) < 0 || status.st_nlink == 0 ||
           status.st_size < static_cast<off_t>(sizeof(Shared));
}

void Reservation::wait_for_turn()
{
    if (shared_ != nullptr && replaced()) {
        unmap();
        map();
    }
    if (shared_ == nullptr)
        return;
    release(); // our last request has had its time; who waits goes first
    const Msec start = now();
    Shared::Place place(*shared_, word(program_, start));
    for (Msec present = start;; present = now()) {
        const std::uint32_t turn = shared_->turn;
        Word holder = shared_->holder;
        int wait_msec = rest_of(holder, present);
        if (wait_msec == 0) {
            // One place in the queue after the other may take the free device, in case those before are no more.
            const int number_before = place.number_before(present);
            wait_msec = number_before * turn_msec - std::max(since(time_of(holder), present), 0);
            if (wait_msec <= 0) {
                if (!shared_->holder.compare_exchange_strong(holder, word(program_, present + reserved_msec)))
                    continue;
                if (number_before > 0)
                    place.overtake();
                return;
            }
        }
        const int left_msec = longest_wait_msec - since(start, present);
        if (left_msec <= 0)
            fail_in_use();
        place.enter(present);
        sleep_while(shared_->turn, turn, std::min(wait_msec, left_msec));
    }
}

/// The 150 ms are those after the write; and the read is to be undisturbed, too.
void Reservation::hold()
{
    if (shared_ == nullptr)
        return;
    Word holder = shared_->holder;
    if (program_of(holder) == program_)
        shared_->holder.compare_exchange_strong(holder, word(program_, now() + reserved_msec));
}

void Reservation::resume()
{
    if (shared_ == nullptr)
        return;
    if (!has_written_) {
        wait_for_turn(); // a program that only reads goes on with what another one began
        return;
    }
    hold();
    if (program_of(shared_->holder) != program_)
        fail_in_use();
}

bool Reservation::release()
{
    if (shared_ == nullptr)
        return true;
    Word holder = shared_->holder;
    if (program_of(holder) != program_)
        return false;
    shared_->give_back(holder, now());
    return program_of(holder) == program_;
}

void Reservation::fail_in_use() const
{
    throw In_Use{static_cast<int>(program_of(shared_->holder) >> object_bits)};
}

}
