#pragma once
// The interface is written in Chinese; other system locales get the English translation.

class QApplication;
class QLocale;
class QTranslator;

namespace autoscene::ui {

// Installs the translation `locale` asks for, owned by `app`; null when the Chinese texts stay.
QTranslator* installTranslation(QApplication& app, const QLocale& locale);

}  // namespace autoscene::ui
