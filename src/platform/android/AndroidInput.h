#pragma once
// Desktop input seen as Android input: key codes and the text "input text" can type.

#include <string>
#include <string_view>

namespace autoscene::platform::android {

// The Android key code for a desktop virtual-key code: a few named keys, then digits
// and letters; any other code is passed on unchanged.
int androidKeyCode(int virtualKey);

struct ShellText {
    std::string argument;  // one word for the device shell, already quoted
    std::string dropped;   // the characters "input text" cannot type (UTF-8), left out
};

// "input text" types printable ASCII only; a blank is written "%s" and the whole word
// goes in single quotes for the device shell.
ShellText inputTextArgument(std::string_view utf8);

}  // namespace autoscene::platform::android
