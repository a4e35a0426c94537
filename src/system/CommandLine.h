#pragma once
// Splits a command line into program and arguments the way a POSIX shell splits words,
// without any expansion: blanks separate words, '...' is literal, "..." keeps blanks and
// honours \" and \\, and a backslash outside quotes takes the next character as it is.

#include <optional>
#include <string>
#include <vector>

namespace autoscene::sys {

// No value when a quote is left open or the line ends in a lone backslash.
std::optional<std::vector<std::string>> splitCommandLine(const std::string& commandLine);

}  // namespace autoscene::sys
