// A console program that the process and crash tests start as a child:
//   lines <count>      writes numbered lines, alternately to standard output and error
//   touch <file>       writes "touched" into the file
//   sleep <ms>         waits, then ends
//   echo               writes back each line it reads until "quit"
//   start-missing      starts a program that does not exist, hidden, and reports the result
//   crash <folder>     installs the crash handler in that folder and crashes
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "system/CrashHandler.h"
#include "system/Process.h"

namespace {

// Unbuffered writes keep the order of the two streams on the shared pipe.
void writeTo(DWORD standardHandle, const std::string& text) {
    DWORD written = 0;
    WriteFile(GetStdHandle(standardHandle), text.data(), static_cast<DWORD>(text.size()), &written,
              nullptr);
}

[[noreturn]] void crash() {
    volatile int* nowhere = nullptr;
    *nowhere = 1;
    std::abort();
}

}  // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "lines" && argc > 2) {
        const int count = std::atoi(argv[2]);
        for (int i = 0; i < count; ++i) {
            char line[32] = {};
            std::snprintf(line, sizeof(line), "line %05d\n", i);
            writeTo(i % 2 == 0 ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE, line);
        }
        return 0;
    }
    if (mode == "touch" && argc > 2) {
        std::ofstream(argv[2]) << "touched";
        return 7;
    }
    if (mode == "sleep" && argc > 2) {
        Sleep(static_cast<DWORD>(std::atoi(argv[2])));
        return 0;
    }
    if (mode == "echo") {
        char line[256] = {};
        while (std::fgets(line, sizeof line, stdin) != nullptr &&
               std::strcmp(line, "quit\n") != 0) {
            writeTo(STD_OUTPUT_HANDLE, line);
        }
        return 0;
    }
    if (mode == "start-missing") {
        _setmode(_fileno(stdout), _O_BINARY);  // compare the text byte for byte
        const auto process = autoscene::sys::startHiddenProcess("no-such-program-here.exe");
        std::printf("started=%d handle=%llu\n", process.started() ? 1 : 0,
                    static_cast<unsigned long long>(process.processHandle));
        return 0;
    }
    if (mode == "crash" && argc > 2) {
        // Without the fault dialog the system ends the process after our filter.
        SetErrorMode(SEM_NOGPFAULTERRORBOX);
        SetCurrentDirectoryA(argv[2]);
        autoscene::sys::installCrashHandler();
        crash();
    }
    std::fputs("process-helper: unknown mode (see the comment at the top)\n", stderr);
    return 2;
}
