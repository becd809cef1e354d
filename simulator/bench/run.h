#pragma once

#include "recorder.h"

#include <csignal>
#include <iosfwd>
#include <optional>

namespace zavra::simulator
{

/// Lets a satellite's time pass without a bus, as fast as the computer can, until it is over or one of the signals,
/// which are blocked, comes. Shows how far it is on standard error where that is a terminal, and tells at the end what
/// came of it. The bench runs by the clock.
/// @throws std::runtime_error  when the orbit ends before
/// @return whether it went on to its end
bool run(Manual_Clock& clock, Test_Bench& bench, const Test_Bench::Unit& unit, Clock::Time duration,
         const sigset_t& stop_signals, std::optional<Recorder>& recorder, std::ostream& summary);

/// Lets the bench's time pass by its clock until one of the signals, which are blocked, comes.
void keep_time(Test_Bench& bench, const sigset_t& stop_signals);

}
