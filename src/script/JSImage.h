#pragma once
// The script object `image`: the calling worker's latest frame, encoded, saved or
// searched for the task's template images.

#include <QJSValue>
#include <QObject>
#include <QRect>

#include "script/ScriptContext.h"

namespace autoscene::script {

class JSImage : public QObject {
    Q_OBJECT
public:
    JSImage(const ScriptContext& context, QObject* parent);

    // `format` as Qt's image writer names it ("png", "jpg"), `quality` 0..100 or -1 for
    // the format's default. Empty text without a frame or for an unknown format.
    Q_INVOKABLE QString toBase64(const QString& format, int quality, const QString& region = {});
    Q_INVOKABLE bool save(const QString& path, const QString& format, int quality,
                          const QString& region = {});
    // {code, msg, rects}: `imageName` lists image names separated by "|"; rects hold
    // "x,y,width,height" per match. code -1, -2 or -3 when a search cannot run.
    Q_INVOKABLE QJSValue find(const QString& imageName, const QString& region = {});
    Q_INVOKABLE bool exist(const QString& imageName, const QString& region = {});

private:
    // The region text as a rectangle inside the frame; the whole frame when it is
    // empty or invalid.
    QRect regionRect(const QString& region) const;
    QByteArray encode(const QString& format, int quality, const QString& region) const;

    ScriptContext context_;
};

}  // namespace autoscene::script
