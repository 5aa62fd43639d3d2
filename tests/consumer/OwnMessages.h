#pragma once

/// How often the library has filled a token through the program's own classes.
int callsOfOwnArg();
