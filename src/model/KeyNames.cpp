#include "model/KeyNames.h"

#include <rapidjson/document.h>
#include <QStringList>

namespace autoscene::model {

namespace {

struct NamedKey {
    int code;
    const char* name;
};

constexpr NamedKey kVirtualKeys[] = {
    {0x08, "Backspace"},  {0x09, "Tab"},    {0x0D, "Enter"},    {0x10, "Shift"}, {0x11, "Ctrl"},
    {0x12, "Alt"},        {0x13, "Pause"},  {0x14, "CapsLock"}, {0x1B, "Esc"},   {0x20, "Space"},
    {0x21, "PgUp"},       {0x22, "PgDown"}, {0x23, "End"},      {0x24, "Home"},  {0x25, "Left"},
    {0x26, "Up"},         {0x27, "Right"},  {0x28, "Down"},     {0x2C, "Print"}, {0x2D, "Ins"},
    {0x2E, "Del"},        {0x5B, "win"},    {0x5C, "win"},      {0x5D, "Menu"},  {0x6A, "*"},
    {0x6B, "+"},          {0x6D, "-"},      {0x6E, "."},        {0x6F, "/"},     {0x90, "NumLock"},
    {0x91, "ScrollLock"}, {0xBA, ";"},      {0xBB, "="},        {0xBC, ","},     {0xBD, "-"},
    {0xBE, "."},          {0xBF, "/"},      {0xC0, "`"},        {0xDB, "["},     {0xDC, "\\"},
    {0xDD, "]"},          {0xDE, "'"},
};

// Qt codes of the modifiers as key groups hold them.
constexpr NamedKey kQtModifiers[] = {
    {0x01000021, "Ctrl"},
    {0x01000023, "Alt"},
    {0x01000020, "Shift"},
    {0x01000022, "win"},
};

}  // namespace

QString virtualKeyName(int key) {
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z')) {
        return QString(QChar(key));
    }
    if (key >= 0x60 && key <= 0x69) {
        return QStringLiteral("Num%1").arg(key - 0x60);
    }
    if (key >= 0x70 && key <= 0x87) {
        return QStringLiteral("F%1").arg(key - 0x70 + 1);
    }
    for (const NamedKey& named : kVirtualKeys) {
        if (named.code == key) {
            return QString::fromLatin1(named.name);
        }
    }
    return key ? QStringLiteral("0x%1").arg(key, 2, 16, QLatin1Char('0')) : QString();
}

QString keyGroupText(const RawJson& group) {
    rapidjson::Document json;
    if (json.Parse(group.text.c_str(), group.text.size()).HasParseError() || !json.IsArray()) {
        return {};
    }
    QStringList names;
    for (const auto& item : json.GetArray()) {
        if (!item.IsInt()) {
            continue;
        }
        const int code = item.GetInt();
        QString name;
        for (const NamedKey& modifier : kQtModifiers) {
            if (modifier.code == code) {
                name = QString::fromLatin1(modifier.name);
            }
        }
        names.push_back(name.isEmpty() ? virtualKeyName(code) : name);
    }
    return names.join(QLatin1Char('+'));
}

}  // namespace autoscene::model
