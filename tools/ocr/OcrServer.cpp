#include "OcrServer.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <opencv2/imgproc.hpp>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>
#include <string>

#include "EngineChoice.h"
#include "OcrAnswer.h"
#include "OcrUpload.h"

namespace autoscene::ocr {

namespace {

constexpr int kBadRequest = 400;
constexpr int kPayloadTooLarge = 413;
constexpr int kServerError = 500;
// Room for the multipart boundaries and part headers around a largest allowed image.
constexpr std::size_t kMultipartOverheadBytes = 64u * 1024u;
// Threads for connections, whatever the number of engines: requests beyond the engines wait
// for one in the pool, while slow or idle clients each hold only their own thread.
constexpr std::size_t kConnectionThreads = 32;
constexpr time_t kReadTimeoutSeconds = 2;
constexpr time_t kKeepAliveSeconds = 2;

// Why 127.0.0.1:`port` cannot be bound, tried with a plain socket for the system's reason.
std::string bindProblem(int port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    const int yes = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    const bool bound = ::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    const int error = errno;
    ::close(fd);
    if (bound) {
        return "the port could not be bound";
    }
    return error == EADDRINUSE ? "the port is already in use by another program"
                               : std::strerror(error);
}

void answerError(httplib::Response& response, int status, std::string_view message) {
    response.status = status;
    response.set_content(buildErrorJson(message), "application/json");
}

}  // namespace

OcrServer::OcrServer() {
    server_.new_task_queue = [] { return new httplib::ThreadPool(kConnectionThreads); };
    server_.set_read_timeout(kReadTimeoutSeconds, 0);
    server_.set_keep_alive_timeout(kKeepAliveSeconds);
    // httplib's default adds SO_REUSEPORT, which would let a second service share the port.
    server_.set_socket_options([](socket_t socket) {
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    server_.set_payload_max_length(kMaxUploadBytes + kMultipartOverheadBytes);
    server_.Post("/ocr_detect", [this](const httplib::Request& request,
                                       httplib::Response& response) { detect(request, response); });
    server_.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (response.status == kPayloadTooLarge) {
            answerError(response, kBadRequest, "the image is larger than 32 MiB");
        } else if (response.body.empty()) {
            answerError(response, response.status,
                        "the request failed with status " + std::to_string(response.status));
        }
    });
}

int OcrServer::bind(int port, std::string& error) {
    const int bound = port == 0 ? server_.bind_to_any_port("127.0.0.1")
                                : (server_.bind_to_port("127.0.0.1", port) ? port : -1);
    if (bound < 0) {
        error = bindProblem(port);
    }
    return bound;
}

bool OcrServer::serve(RecogniserPool& pool) {
    pool_ = &pool;
    return server_.listen_after_bind();
}

void OcrServer::stop() {
    server_.stop();
}

void OcrServer::detect(const httplib::Request& request, httplib::Response& response) {
    if (!request.is_multipart_form_data() || !request.has_file("image")) {
        answerError(response, kBadRequest,
                    "expected a multipart/form-data upload with the file field \"image\"");
        return;
    }
    const DecodedUpload upload = decodeUpload(request.get_file_value("image").content);
    if (!upload.error.empty()) {
        answerError(response, kBadRequest, upload.error);
        return;
    }
    const Engine wanted = request.has_file("engine")
                              ? parseEngine(request.get_file_value("engine").content)
                              : Engine::Accurate;
    if (wanted == Engine::Invalid) {
        answerError(response, kBadRequest, R"(the field "engine" must be "accurate" or "fast")");
        return;
    }
    try {
        const RecogniserPool::Lease engines = pool_->acquire();
        // Without its models the accurate engine is absent; the answer names the stand-in.
        const Engine used =
            wanted == Engine::Accurate && engines->accurate ? Engine::Accurate : Engine::Fast;
        std::vector<TextLine> lines;
        if (used == Engine::Accurate) {
            const FoundLines found = engines->accurate->find(upload.bgr);
            // An idle set reads half of the lines; a busy service reads them alone.
            const std::optional<RecogniserPool::Lease> partner =
                found.crops.size() > 1 ? pool_->tryAcquire() : std::nullopt;
            lines = engines->accurate->read(found, partner ? (*partner)->accurate.get() : nullptr);
        } else {
            cv::Mat gray;
            cv::cvtColor(upload.bgr, gray, cv::COLOR_BGR2GRAY);
            lines = engines->fast->recognise(gray);
        }
        response.set_content(buildAnswerJson(lines, engineName(used)), "application/json");
    } catch (const std::exception& error) {
        answerError(response, kServerError, error.what());
    }
}

}  // namespace autoscene::ocr
