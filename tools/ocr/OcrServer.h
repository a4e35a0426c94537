#pragma once

#include <httplib.h>

#include "RecogniserPool.h"

namespace autoscene::ocr {

// HTTP front of the service: POST /ocr_detect with a multipart form whose file field
// "image" holds a PNG and whose optional field "engine" is "accurate" (the default) or
// "fast". Listens on 127.0.0.1 only; every error answer is JSON.
class OcrServer {
public:
    explicit OcrServer(RecogniserPool& pool);

    // Binds 127.0.0.1:`port` (0: any free port). Returns the bound port, or -1.
    int bind(int port);

    // Serves until stop(); false when the listening socket failed.
    bool serve();
    void stop();

private:
    void detect(const httplib::Request& request, httplib::Response& response);

    RecogniserPool& pool_;
    httplib::Server server_;
};

}  // namespace autoscene::ocr
