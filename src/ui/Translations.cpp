#include "ui/Translations.h"

#include <QApplication>
#include <QLocale>
#include <QTranslator>

namespace autoscene::ui {

QTranslator* installTranslation(QApplication& app, const QLocale& locale) {
    if (locale.language() == QLocale::Chinese) {
        return nullptr;
    }
    auto* english = new QTranslator(&app);
    if (!english->load(QStringLiteral(":/i18n/autoscene_en.qm")) ||
        !QApplication::installTranslator(english)) {
        delete english;
        return nullptr;
    }
    return english;
}

}  // namespace autoscene::ui
