#pragma once
// Why a probed item does not hold, in the user's language.

#include <QString>

namespace autoscene::probe::reasons {

QString noFrame();
QString notOnScreen();
QString imageUnreadable();
QString templateLargerThanArea();
QString outsideSearchArea();
QString scoreBelow(float score, float threshold);
QString imageShown(float score, float threshold);
QString noLabelModel();
QString noLabelBox(const QString& label);
QString labelShown(const QString& label, float probability);
QString colourDeleted();
QString colourCount(int count, int limit, bool wantsMore);
QString changeNeedsTwoFrames();
QString textNotRead(const QString& wanted);
QString textShown(const QString& wanted);
QString actionRefused(const QString& why);

}  // namespace autoscene::probe::reasons
