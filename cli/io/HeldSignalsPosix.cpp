#include "HeldSignals.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <initializer_list>

namespace kdx {
namespace {

constexpr unsigned kEnding = 1U << 31U;

/// How many hold the signals, and whether one has come: in one word, so that none can begin to hold
/// them between the two.
std::atomic<unsigned> holders{0};
std::atomic<int> signalThatCame{0};
static_assert(std::atomic<unsigned>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "a handler uses them");

/// Of a handler's own signal, the end comes when the handler returns.
void endBy(int signal) {
    (void)std::signal(signal, SIG_DFL);
    (void)std::raise(signal);
}

extern "C" void noteSignal(int signal) {
    int none = 0;
    signalThatCame.compare_exchange_strong(none, signal);
    if (holders.fetch_or(kEnding) == 0) endBy(signal);
}

bool handleSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXFSZ}) {
        struct sigaction action {};
        if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action.sa_handler = noteSignal;
        action.sa_flags = SA_RESTART;
        (void)::sigaction(signal, &action, nullptr);
    }
    return true;
}

}  // namespace

HeldSignals::HeldSignals() {
    static const bool handled = handleSignals();
    (void)handled;
    unsigned count = holders;
    while ((count & kEnding) != 0 || !holders.compare_exchange_weak(count, count + 1))
        if ((count & kEnding) != 0) ::pause();
}

HeldSignals::~HeldSignals() {
    if (--holders == kEnding) endBy(signalThatCame);
}

}  // namespace kdx
