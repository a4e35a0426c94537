#pragma once

#include <httplib.h>

#include "RecogniserPool.h"

namespace autoscene::ocr {

// HTTP front of the service: POST /ocr_detect with a multipart form whose file field
// "image" holds a PNG and whose optional field "engine" is "accurate" (the default) or
// "fast". Listens on 127.0.0.1 only; every error answer is JSON.
//
// Connections get threads of their own, many more than there are engines, and a client
// that sends slowly or not at all is dropped after a short read time-out: idle or slow
// clients cannot hold the others back.
class OcrServer {
public:
    OcrServer();

    // Binds 127.0.0.1:`port` (0: any free port), before the engines load, so that a port in
    // use is found at once. Returns the bound port, or -1 with the reason in `error`.
    int bind(int port, std::string& error);

    // Serves with `pool` until stop(); false when the listening socket failed.
    bool serve(RecogniserPool& pool);
    void stop();

private:
    void detect(const httplib::Request& request, httplib::Response& response);

    RecogniserPool* pool_ = nullptr;
    httplib::Server server_;
};

}  // namespace autoscene::ocr
