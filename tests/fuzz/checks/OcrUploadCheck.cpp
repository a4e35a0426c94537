#include "Checks.h"

#include <httplib.h>

#include <QJsonDocument>
#include <QJsonValue>
#include <thread>

#include "OcrServer.h"
#include "RecogniserPool.h"
#include "text/RecognisedText.h"

namespace autoscene::fuzz {

namespace {

// The service's own HTTP front on a loopback port, in this process and with one
// English engine: uploads, not recognition, are under test. Started once.
class LoopbackService {
public:
    LoopbackService()
        : pool_(1, "eng"),
          port_(server_.bind(0, bindError_)),
          client_("127.0.0.1", port_),
          serving_([this] { server_.serve(pool_); }) {
        // A decodable upload may be large; its recognition must not look like a lost answer.
        client_.set_read_timeout(120);
    }
    ~LoopbackService() {
        server_.stop();
        serving_.join();
    }
    httplib::Client& client() { return client_; }

private:
    ocr::RecogniserPool pool_;
    ocr::OcrServer server_;
    std::string bindError_;
    int port_;
    httplib::Client client_;
    std::thread serving_;
};

bool isErrorJson(const std::string& body) {
    const QJsonValue error = QJsonDocument::fromJson(QByteArray::fromStdString(body))["error"];
    return error.isString() && !error.toString().isEmpty();
}

}  // namespace

QString checkOcrUpload(const QByteArray& input) {
    static LoopbackService service;
    const httplib::Result answer =
        service.client().Post("/ocr_detect", input.constData(), size_t(input.size()),
                              "multipart/form-data; boundary=autoscene-fuzz");
    if (!answer) {
        return QStringLiteral("no answer: %1")
            .arg(QString::fromStdString(httplib::to_string(answer.error())));
    }
    const std::string& body = answer->body;
    if ((answer->status == 200 && text::parseRecognisedText(body)) ||
        (answer->status == 400 && isErrorJson(body))) {
        return {};
    }
    return QStringLiteral("answered %1 with %2")
        .arg(QString::number(answer->status), QString::fromStdString(body));
}

}  // namespace autoscene::fuzz
