#include "probe/ProbeReasons.h"

#include <QCoreApplication>

namespace autoscene::probe::reasons {

namespace {

QString decimals(float value) {
    return QString::number(double(value), 'f', 2);
}

}  // namespace

QString noFrame() {
    return QCoreApplication::translate("ProbeReasons", "没有画面");
}

QString notOnScreen() {
    return QCoreApplication::translate("ProbeReasons", "此项不看屏幕");
}

QString imageUnreadable() {
    return QCoreApplication::translate("ProbeReasons", "图片不存在或无法读取");
}

QString templateLargerThanArea() {
    return QCoreApplication::translate("ProbeReasons", "图片大于查找范围");
}

QString outsideSearchArea() {
    return QCoreApplication::translate("ProbeReasons", "在查找范围之外");
}

QString scoreBelow(float score, float threshold) {
    return QCoreApplication::translate("ProbeReasons", "相似度 %1 < %2")
        .arg(decimals(score), decimals(threshold));
}

QString imageShown(float score, float threshold) {
    return QCoreApplication::translate("ProbeReasons", "图片在屏幕上：相似度 %1 ≥ %2")
        .arg(decimals(score), decimals(threshold));
}

QString noLabelModel() {
    return QCoreApplication::translate("ProbeReasons", "没有加载标签模型");
}

QString noLabelBox(const QString& label) {
    return QCoreApplication::translate("ProbeReasons", "没有标签 %1 的框").arg(label);
}

QString labelShown(const QString& label, float probability) {
    return QCoreApplication::translate("ProbeReasons", "标签 %1 在屏幕上：概率 %2")
        .arg(label, decimals(probability));
}

QString colourDeleted() {
    return QCoreApplication::translate("ProbeReasons", "颜色已被删除");
}

QString colourCount(int count, int limit, bool wantsMore) {
    return wantsMore ? QCoreApplication::translate("ProbeReasons", "颜色像素 %1，不多于 %2")
                           .arg(count)
                           .arg(limit)
                     : QCoreApplication::translate("ProbeReasons", "颜色像素 %1，多于 %2")
                           .arg(count)
                           .arg(limit);
}

QString changeNeedsTwoFrames() {
    return QCoreApplication::translate("ProbeReasons", "颜色的变化要两帧才能看出");
}

QString textNotRead(const QString& wanted) {
    return QCoreApplication::translate("ProbeReasons", "范围内没有读到“%1”").arg(wanted);
}

QString textShown(const QString& wanted) {
    return QCoreApplication::translate("ProbeReasons", "读到了“%1”").arg(wanted);
}

QString actionRefused(const QString& why) {
    return QCoreApplication::translate("ProbeReasons", "不会点击：%1").arg(why);
}

}  // namespace autoscene::probe::reasons
