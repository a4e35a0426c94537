#include "script/ShellCommand.h"

#include <QUrl>

namespace autoscene::script {

namespace {

// One word for the POSIX command-line splitter: quoted as a whole, every ' written as '\''.
std::string singleQuoted(const QString& text) {
    std::string quoted = "'";
    for (const char c : text.toStdString()) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

}  // namespace

std::string shellCommandLine(const QString& command) {
#ifdef _WIN32
    return "cmd.exe /c " + command.toLocal8Bit().toStdString();
#else
    return "/bin/sh -c " + singleQuoted(command);
#endif
}

std::string openUrlCommandLine(const QString& url) {
    const QUrl parsed(url);
    if (!parsed.isValid() || parsed.isRelative()) {
        return {};
    }
    const QString encoded = QString::fromLatin1(parsed.toEncoded());
#ifdef _WIN32
    return "cmd.exe /c start \"\" \"" + encoded.toStdString() + "\"";
#else
    return "xdg-open " + singleQuoted(encoded);
#endif
}

}  // namespace autoscene::script
