#pragma once
// What the forms show for a record key: its label, its hint, its unit and, for codes, the
// choices. One table for every record, since a key means the same wherever it occurs.

#include <QString>
#include <string_view>
#include <vector>

namespace autoscene::ui {

enum class FieldUnit { None, Seconds, Milliseconds, Minutes, Similarity };

struct Choice {
    int value = 0;
    QString text;
};

struct FieldText {
    QString label;
    QString hint;  // empty when none
    FieldUnit unit = FieldUnit::None;
};

// The key itself as label when the table has no row for it.
FieldText fieldText(std::string_view key);
// Empty for a key whose codes depend on the record (state) or that is no code.
std::vector<Choice> keyChoices(std::string_view key);

// The codes of `state` and of the mouse-up action's `button`, per record.
std::vector<Choice> presenceChoices();
std::vector<Choice> variableCompareChoices();
std::vector<Choice> textCompareChoices();
std::vector<Choice> colorTestChoices();
std::vector<Choice> mouseUpChoices();

// The label of a text region's `value`, which elsewhere is a variable's default value.
QString comparedTextLabel();

QString unitSuffix(FieldUnit unit);

}  // namespace autoscene::ui
