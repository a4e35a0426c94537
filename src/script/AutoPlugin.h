#pragma once
// The object behind the global function `sleep`.

#include <QObject>

namespace autoscene::script {

class AutoPlugin : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // Sleeps `seconds` (a float); returns early when the evaluation is interrupted.
    // Anything that is not a positive number sleeps not at all.
    Q_INVOKABLE void sleep(double seconds);
};

}  // namespace autoscene::script
