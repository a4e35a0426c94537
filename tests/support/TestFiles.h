#pragma once
// Whole files read and written by tests; a file that cannot be opened fails the test.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

namespace autoscene::test {

inline QByteArray readFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

inline void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

// The lines of a log another process writes; none while it has written nothing.
inline QStringList logLines(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
               : QStringList();
}

}  // namespace autoscene::test
