#pragma once
// The recognition service for text items tried on the screen: the program a run starts,
// started when a text item is first tried and kept until the window goes.

#include <memory>

#include "app/OcrServiceWatcher.h"

namespace autoscene::ui {

class ProbeOcr {
public:
    // A client with an address is taken as pointing at a running service.
    explicit ProbeOcr(
        std::shared_ptr<text::OcrClient> client = std::make_shared<text::OcrClient>());

    // The client, the service started first when it has no address; null when the program
    // is not installed.
    std::shared_ptr<const text::OcrClient> client();

private:
    std::shared_ptr<text::OcrClient> client_;
    app::OcrServiceWatcher watcher_;
};

}  // namespace autoscene::ui
