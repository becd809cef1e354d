#pragma once

#include "../bench/test_bench.h"
#include "../report/report.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

struct mg_connection;
struct mg_context;

namespace zavra::simulator
{

/// Shows a flight in browsers of this computer while it goes on. Only the loopback interface listens; what a page of
/// another origin sends is refused. Each viewer has a thread of its own: a slow one misses moments and holds up nobody.
///
///     GET /          the page with what was so far
///     GET /stream    server-sent events, five a second: the moment, the unit's telemetry, what is new in the journal
///     POST /control  a JSON object of at most 4096 bytes as Control_Server takes it; the answer is its answer
///
/// Other requests get 404, 405 for the method, 403 for the origin, 413 for the size, 400 for what makes no sense.
class View_Server
{
public:
    /// @param port  0 for any that is free
    /// @throws std::runtime_error  when it cannot listen
    View_Server(Test_Bench& bench, Test_Bench::Unit& unit, const Report& report, unsigned int port);
    ~View_Server();
    View_Server(const View_Server&) = delete;
    View_Server& operator=(const View_Server&) = delete;

    /// "http://127.0.0.1:8080/"
    std::string address() const { return "http://" + host_ + '/'; }

    /// Each control tick, after the report has it.
    void add(const Sample& sample);

    /// A transaction as the journal has it.
    void add(const Json& journal_entry);

private:
    static int handle(mg_connection* connection, void* server);
    void answer(mg_connection* connection);
    void stream(mg_connection* connection);
    void control(mg_connection* connection);
    bool is_our_own(mg_connection* connection) const;
    std::string page();
    Json frame(unsigned long long& journal_seen);

    Test_Bench& bench_;
    Test_Bench::Unit& unit_;
    const Report& report_;
    const std::string run_; ///< Tells this run from another at the same port
    std::string host_;
    std::mutex mutex_;
    std::condition_variable ending_;
    bool ends_ = false;
    Sample latest_{};
    std::deque<std::string> journal_;
    unsigned long long journal_lines_ = 0;
    mg_context* context_ = nullptr;
};

}
