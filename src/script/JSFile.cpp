#include "script/JSFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace autoscene::script {

namespace {

bool removePath(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink()) {
        return QDir(path).removeRecursively();
    }
    return info.exists() || info.isSymLink() ? QFile::remove(path) : false;
}

}  // namespace

bool JSFile::touch(const QString& filePath) {
    QFile file(filePath);
    return file.exists() || file.open(QIODevice::WriteOnly);
}

bool JSFile::mkdir(const QString& path) {
    return !path.isEmpty() && QDir().mkpath(path);
}

bool JSFile::remove(const QString& path) {
    return !path.isEmpty() && removePath(path);
}

QString JSFile::read(const QString& filePath) {
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

QString JSFile::readLine(const QString& filePath, int line) {
    QFile file(filePath);
    if (line < 0 || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return {};
    }
    QTextStream in(&file);
    for (int index = 0; !in.atEnd(); ++index) {
        QString text = in.readLine();
        if (index == line) {
            return text;
        }
    }
    return {};
}

bool JSFile::write(const QString& filePath, const QString& content, bool append) {
    QFile file(filePath);
    if (!file.open(QIODevice::WriteOnly | (append ? QIODevice::Append : QIODevice::Truncate))) {
        return false;
    }
    const QByteArray bytes = content.toUtf8();
    return file.write(bytes) == bytes.size();
}

bool JSFile::copy(const QString& src, const QString& dst) {
    return QFile::copy(src, dst);
}

bool JSFile::rename(const QString& src, const QString& dst) {
    if (src.isEmpty() || dst.isEmpty() || !QFileInfo::exists(src)) {
        return false;
    }
    // On a case-blind file system `dst` is `src`: removing it would lose the source.
    if (src.compare(dst, Qt::CaseInsensitive) != 0 && QFileInfo(dst).exists()) {
        removePath(dst);
    }
    return QDir().rename(src, dst);
}

bool JSFile::move(const QString& src, const QString& dst) {
    return rename(src, dst);
}

QStringList JSFile::listFile(const QString& path) {
    if (path.isEmpty()) {
        return {};
    }
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                QDir::NoDotAndDotDot);
}

}  // namespace autoscene::script
