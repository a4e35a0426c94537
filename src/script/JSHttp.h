#pragma once
// The script object `http`: blocking GET, POST and download.

#include <QJSValue>
#include <QObject>
#include <chrono>
#include <stop_token>

#include "http/Http.h"

namespace autoscene::script {

// Bounds every transfer of a script, so that a silent server cannot hold a worker for ever.
inline constexpr std::chrono::milliseconds kScriptHttpTimeout{30000};

class JSHttp : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // The stop of the run the script evaluates in; a transfer under way ends when it is set.
    void setStop(std::stop_token stop) { stop_ = std::move(stop); }

    // The response body; empty when nothing came.
    Q_INVOKABLE QString get(const QString& url);
    // `data`'s members as form fields (strings as they are, numbers in %g form, booleans
    // as "true"/"false", anything else empty); not an object: no fields.
    Q_INVOKABLE QString post(const QString& url, const QJSValue& data);
    // `data` as compact JSON with "Content-Type: application/json"; nothing is sent for data
    // without a JSON form (a cycle, undefined).
    Q_INVOKABLE QString postJson(const QString& url, const QJSValue& data);
    // Writes the body to `file`, creating its folder; the file's path, or empty on failure.
    Q_INVOKABLE QString download(const QString& url, const QString& file);

private:
    http::HttpLimits limits() const;

    std::stop_token stop_;
};

}  // namespace autoscene::script
