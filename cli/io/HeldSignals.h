#pragma once

namespace kdx {

/// While one of these lives, the signals INT, TERM, HUP, QUIT and XFSZ do not end the process: what
/// is too large for a limit cannot be written then. The last one to go ends it by the signal that
/// came meanwhile; once one has come, a new one waits for the end. Signals that the process was
/// started to ignore stay ignored. Works across threads.
class HeldSignals {
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
};

}  // namespace kdx
