#include <VELM_ZAVRA_SHARED.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace zavra::test
{

using velm_zavra::Shared;
using namespace std::chrono_literals;

TEST(Shared, lets_one_thread_in_at_a_time_and_everybody_in_turn)
{
    struct Probe
    {
        explicit Probe(int start) : count(start) {}
        int call()
        {
            overlapped = overlapped || inside;
            inside = true;
            std::this_thread::yield();
            inside = false;
            return ++count;
        }
        int count;
        bool inside = false, overlapped = false;
    };
    Shared<Probe> shared(5);
    const auto work = [&] {
        for (int i = 0; i < 1000; ++i) {
            const auto calls = shared.lock();
            const int before = calls->call();
            EXPECT_EQ((*calls).call(), before + 1);
            shared->call();
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_FALSE(shared->overlapped);
    EXPECT_EQ(shared->count, 6005);
    EXPECT_EQ(shared->call() + shared->call(), 6006 + 6007) << "two locks of one thread";

    auto first = std::make_unique<Shared<Probe>::Lock>(shared.lock());
    std::vector<int> order;
    std::vector<std::thread> waiting;
    for (int i = 0; i < 3; ++i) {
        waiting.emplace_back([&, i] {
            const auto calls = shared.lock();
            order.push_back(i);
        });
        std::this_thread::sleep_for(50ms);
    }
    first.reset();
    {
        const auto again = shared.lock();
        order.push_back(3);
    }
    for (std::thread& each : waiting)
        each.join();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3}));
}

}
