// The libFuzzer side of every target: the program's name, fuzz_<target>, selects the
// check it runs on each input. A failed check aborts, which libFuzzer reports and keeps
// as a crash file.

#include <QFileInfo>
#include <QtGlobal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "Checks.h"

namespace {

// Parsers log what they refuse; at thousands of inputs a second that log would bury
// the fuzzer's own output and slow it down.
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

autoscene::fuzz::Check check = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
    qInstallMessageHandler(dropMessage);
    const QString program = QFileInfo(QString::fromLocal8Bit((*argv)[0])).fileName();
    check = autoscene::fuzz::findCheck(program.mid(program.indexOf(QLatin1Char('_')) + 1));
    if (!check) {
        std::fprintf(stderr, "%s: no fuzz target of that name\n", qUtf8Printable(program));
        std::abort();
    }
    // One-time start-up (the OCR service loads its models) happens here, where it does
    // not count against the timeout of the first input.
    check(QByteArray());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Not copied: the sanitizers see any read past the input's end.
    const QByteArray input =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString failure = check(input);
    if (!failure.isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
        std::abort();
    }
    return 0;
}
