#include "view_server.h"

#include "../../catalogue/commands.h"
#include "../bench/control_server.h"

#include <array>
#include <chrono>
#include <civetweb.h>
#include <stdexcept>
#include <string_view>

namespace zavra::simulator
{

namespace
{

constexpr std::size_t most_bytes = 4096;
constexpr std::size_t journal_kept = 200;
constexpr std::chrono::milliseconds between_frames{200};

void reply(mg_connection* connection, int status, const char* type, std::string_view body)
{
    mg_printf(connection,
              "HTTP/1.1 %d %s\r\nContent-Type: %s\r\nContent-Length: %zu\r\nCache-Control: no-store\r\n"
              "X-Content-Type-Options: nosniff\r\nX-Frame-Options: DENY\r\nConnection: close\r\n\r\n",
              status, mg_get_response_code_text(connection, status), type, body.size());
    mg_write(connection, body.data(), body.size());
}

void refuse(mg_connection* connection, int status, const std::string& reason)
{
    reply(connection, status, "application/json", json::shown({{"error", reason}}));
}

Json telemetry_of(Simulated_Unit& unit)
{
    Json fields = Json::object();
    for (const char* const method : {"Get_Attitude_Telemetry", "Get_Actuator_Telemetry", "Get_Power_Telemetry"}) {
        const Described_Command& command = *find_command(method);
        const Command_Table::Outcome outcome = unit.command(command.identifier, {});
        if (outcome.status == Command_Table::Status::done)
            fields.update(command.decode_response(outcome.replies.front()));
    }
    return fields;
}

}

View_Server::View_Server(Test_Bench& bench, Test_Bench::Unit& unit, const Report& report, unsigned int port)
    : bench_(bench),
      unit_(unit),
      report_(report),
      run_(std::to_string(std::chrono::system_clock::now().time_since_epoch().count()))
{
    mg_init_library(MG_FEATURES_DEFAULT);
    mg_callbacks callbacks{};
    callbacks.log_message = [](const mg_connection*, const char*) { return 1; };
    const std::string listen = "127.0.0.1:" + std::to_string(port);
    const std::array<const char*, 7> options{"listening_ports",    listen.c_str(), "num_threads", "64",
                                             "request_timeout_ms", "5000",         nullptr};
    context_ = mg_start(&callbacks, nullptr, const_cast<const char**>(options.data()));
    if (context_ == nullptr) {
        mg_exit_library();
        throw std::runtime_error("The view cannot listen on " + listen + "; is another program there?");
    }
    mg_server_port bound{};
    mg_get_server_ports(context_, 1, &bound);
    host_ = "127.0.0.1:" + std::to_string(bound.port);
    mg_set_request_handler(context_, "**", handle, this);
}

View_Server::~View_Server()
{
    {
        const std::lock_guard guard(mutex_);
        ends_ = true;
    }
    ending_.notify_all();
    mg_stop(context_);
    mg_exit_library();
}

void View_Server::add(const Sample& sample)
{
    const std::lock_guard guard(mutex_);
    latest_ = sample;
}

void View_Server::add(const Json& journal_entry)
{
    const std::lock_guard guard(mutex_);
    journal_.push_back(json::shown(journal_entry));
    ++journal_lines_;
    if (journal_.size() > journal_kept)
        journal_.pop_front();
}

int View_Server::handle(mg_connection* connection, void* server)
{
    static_cast<View_Server*>(server)->answer(connection);
    return 1;
}

bool View_Server::is_our_own(mg_connection* connection) const
{
    const std::string port = host_.substr(host_.find(':'));
    const auto names_us = [&](std::string_view host) { return host == host_ || host == "localhost" + port; };
    const char* const host = mg_get_header(connection, "Host");
    const char* const origin = mg_get_header(connection, "Origin");
    constexpr std::string_view scheme = "http://";
    return host != nullptr && names_us(host) &&
           (origin == nullptr ||
            (std::string_view(origin).starts_with(scheme) && names_us(std::string_view(origin).substr(scheme.size()))));
}

void View_Server::answer(mg_connection* connection)
{
    const mg_request_info& request = *mg_get_request_info(connection);
    const std::string_view path = request.local_uri;
    const std::string_view method = request.request_method;
    if (!is_our_own(connection))
        return refuse(connection, 403, "a page of another origin has no business here");
    if (path != "/" && path != "/stream" && path != "/control")
        return refuse(connection, 404, "there is nothing here");
    if (method != (path == "/control" ? "POST" : "GET"))
        return refuse(connection, 405, "this is not done by " + std::string(method));
    if (path == "/control")
        control(connection);
    else if (path == "/stream")
        stream(connection);
    else
        reply(connection, 200, "text/html; charset=utf-8", page());
}

void View_Server::control(mg_connection* connection)
{
    const long long length = mg_get_request_info(connection)->content_length;
    if (length < 0 || length > static_cast<long long>(most_bytes))
        return refuse(connection, 413, "at most " + std::to_string(most_bytes) + " bytes, and their number");
    std::string body(static_cast<std::size_t>(length), '\0');
    for (std::size_t got = 0; got < body.size();) {
        const int more = mg_read(connection, body.data() + got, body.size() - got);
        if (more <= 0)
            return refuse(connection, 400, "the request ends early");
        got += static_cast<std::size_t>(more);
    }
    const Json result = Control_Server::answer(bench_, body);
    reply(connection, result.contains("error") ? 400 : 200, "application/json", json::shown(result));
}

std::string View_Server::page()
{
    const Agenda::Standstill moment(bench_.time);
    Json faults = Json::array();
    for (std::size_t i = 0; i < number_of_faults; ++i)
        faults.push_back(name_of(static_cast<Fault>(i)));
    return report_.html({{"run", run_}, {"faults", faults}});
}

Json View_Server::frame(unsigned long long& journal_seen)
{
    Json frame{{"run", run_},
               {"time_factor", bench_.time.factor()},
               {"telemetry", telemetry_of(unit_.unit)},
               {"moment", Json::object()},
               {"journal", Json::array()}};
    const std::lock_guard guard(mutex_);
    for (std::size_t i = 0; i < latest_.size(); ++i)
        frame["moment"][std::string(record_columns[i])] = std::isnan(latest_[i]) ? Json() : Json(latest_[i]);
    const unsigned long long first_kept = journal_lines_ - journal_.size();
    for (unsigned long long i = std::max(journal_seen, first_kept); i < journal_lines_; ++i)
        frame["journal"].push_back(journal_[static_cast<std::size_t>(i - first_kept)]);
    journal_seen = journal_lines_;
    return frame;
}

void View_Server::stream(mg_connection* connection)
{
    mg_printf(connection, "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nCache-Control: no-store\r\n"
                          "Connection: close\r\n\r\nretry: 500\n\n");
    unsigned long long journal_seen = 0;
    for (;;) {
        const std::string text = "data: " + json::shown(frame(journal_seen)) + "\n\n";
        if (mg_write(connection, text.data(), text.size()) <= 0)
            return;
        std::unique_lock lock(mutex_);
        if (ending_.wait_for(lock, between_frames, [&] { return ends_; }))
            return;
    }
}

}
