#pragma once
// The service that the client, service and text-item tests share, started on first use
// and ended with the program: it takes seconds to load its models. Four engines serve
// four clients at once.

#include "OcrServiceProcess.h"

namespace autoscene::ocr::testkit {

inline const OcrServiceProcess& sharedOcrService() {
    static const OcrServiceProcess service(MORVANE_OCR_PROGRAM, 4);
    return service;
}

}  // namespace autoscene::ocr::testkit
