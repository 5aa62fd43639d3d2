#pragma once

#include <string>

namespace CLI {
class Error;
}

namespace kdx {

struct Program;

/// What the user is told of arguments that cannot be taken, with the command or the option that a
/// word nobody knows was perhaps meant to be.
std::string failureMessage(const Program& program, const CLI::Error& error);

}  // namespace kdx
