#include "script/JSHttp.h"

#include <QDir>
#include <QFileInfo>
#include <QJSEngine>
#include <QJSValueIterator>
#include <QLoggingCategory>

#include "http/Http.h"

namespace autoscene::script {

Q_LOGGING_CATEGORY(lcScriptHttp, "autoscene.script.http")

namespace {

std::string formValue(const QJSValue& value) {
    if (value.isString()) {
        return value.toString().toStdString();
    }
    if (value.isNumber()) {
        return QString::number(value.toNumber(), 'g', 6).toStdString();
    }
    if (value.isBool()) {
        return value.toBool() ? "true" : "false";
    }
    return {};
}

QString fromBody(const std::string& body) {
    return QString::fromUtf8(body.data(), qsizetype(body.size()));
}

}  // namespace

http::HttpLimits JSHttp::limits() const {
    http::HttpLimits limits;
    limits.timeout = kScriptHttpTimeout;
    limits.stop = stop_;
    return limits;
}

QString JSHttp::get(const QString& url) {
    QString body = fromBody(http::httpGet(url.toStdString(), {}, limits()));
    qCDebug(lcScriptHttp).noquote() << "get result:" << body.left(1000);
    return body;
}

QString JSHttp::post(const QString& url, const QJSValue& data) {
    http::HttpFields fields;
    if (data.isObject() && !data.isArray()) {
        QJSValueIterator member(data);
        while (member.hasNext()) {
            member.next();
            fields[member.name().toStdString()] = formValue(member.value());
        }
    }
    return fromBody(http::httpPostForm(url.toStdString(), {}, fields, limits()));
}

QString JSHttp::postJson(const QString& url, const QJSValue& data) {
    QJSEngine* engine = qjsEngine(this);
    if (!engine) {
        return {};
    }
    // The engine's own JSON.stringify: the text is what the script itself would print.
    const QJSValue json = engine->globalObject()
                              .property(QStringLiteral("JSON"))
                              .property(QStringLiteral("stringify"))
                              .call({data});
    // A cycle, undefined or a function has no JSON text: nothing is sent.
    if (!json.isString()) {
        qCDebug(lcScriptHttp) << "postJson: the data has no JSON form";
        return {};
    }
    return fromBody(
        http::httpPostJson(url.toStdString(), {}, json.toString().toStdString(), limits()));
}

QString JSHttp::download(const QString& url, const QString& file) {
    if (file.isEmpty()) {
        return {};
    }
    const QFileInfo target(file);
    if (!QDir().mkpath(target.absolutePath())) {
        return {};
    }
    const bool ok = http::httpDownloadToFile(url.toStdString(), {},
                                             QFile::encodeName(file).toStdString(), limits());
    return ok ? file : QString();
}

}  // namespace autoscene::script
