#pragma once

#include "Arguments.h"

namespace kdx {

/// Each of these adds one subcommand, which runs when the arguments name it.
void addCheck(Program& program);
void addCompletion(Program& program);
void addDiff(Program& program);
void addFind(Program& program);
void addFmt(Program& program);
void addGet(Program& program);
void addManual(Program& program);
void addMap(Program& program);
void addSplit(Program& program);
void addStrip(Program& program);
void addTree(Program& program);
void addWrite(Program& program);

}  // namespace kdx
