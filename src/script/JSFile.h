#pragma once
// The script object `file`: files and folders. Every method fails quietly, with false or
// empty text.

#include <QObject>
#include <QStringList>

namespace autoscene::script {

class JSFile : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // Creates the file unless it exists.
    Q_INVOKABLE bool touch(const QString& filePath);
    // With every missing parent.
    Q_INVOKABLE bool mkdir(const QString& path);
    // A folder with everything in it, or a file; false when neither exists.
    Q_INVOKABLE bool remove(const QString& path);
    Q_INVOKABLE QString read(const QString& filePath);
    // The line at index `line` (from 0), without its line break.
    Q_INVOKABLE QString readLine(const QString& filePath, int line);
    // UTF-8; replaces the file unless `append`.
    Q_INVOKABLE bool write(const QString& filePath, const QString& content, bool append = false);
    Q_INVOKABLE bool copy(const QString& src, const QString& dst);
    // An existing `dst` is removed first, unless it is `src` itself in other letter case.
    Q_INVOKABLE bool rename(const QString& src, const QString& dst);
    Q_INVOKABLE bool move(const QString& src, const QString& dst);
    Q_INVOKABLE QStringList listFile(const QString& path);
};

}  // namespace autoscene::script
