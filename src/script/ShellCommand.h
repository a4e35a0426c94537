#pragma once
// Command lines that hand a text to the system's shell, for the process utilities.

#include <QString>
#include <string>

namespace autoscene::script {

// "cmd.exe /c TEXT" on Windows, "/bin/sh -c 'TEXT'" elsewhere.
std::string shellCommandLine(const QString& command);

// Opens `url` with the desktop's handler ("cmd.exe /c start", xdg-open); empty when the
// text is no absolute URL.
std::string openUrlCommandLine(const QString& url);

}  // namespace autoscene::script
