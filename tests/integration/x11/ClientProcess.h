#pragma once
// A program run on the test's display, its standard output kept in a temporary file.

#include <sys/types.h>

#include <string>
#include <vector>

namespace autoscene::testing {

class ClientProcess {
public:
    // `argv[0]` is looked up in PATH; `started()` is false when it could not be run.
    ClientProcess(const std::string& display, const std::vector<std::string>& argv);
    ~ClientProcess();
    ClientProcess(const ClientProcess&) = delete;
    ClientProcess& operator=(const ClientProcess&) = delete;

    bool started() const { return pid_ > 0; }
    std::string output() const;
    // Ends the process and waits for it.
    void stop();

private:
    pid_t pid_ = -1;
    std::string directory_;
    std::string outputPath_;
};

}  // namespace autoscene::testing
