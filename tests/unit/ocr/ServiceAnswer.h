#pragma once
// An answer of the service as the tests read it: the text and boxes as the client reads
// them, and the engine that answered or the error it gave.

#include <rapidjson/document.h>

#include <optional>
#include <string>
#include <vector>

#include "text/RecognisedText.h"

namespace autoscene::ocr::testkit {

struct ServiceAnswer {
    std::optional<text::RecognisedText> text;  // nothing when the body is no recognition
    std::string engine;
    std::string error;

    // The boxes' texts in the answer's order.
    std::vector<std::string> lines() const {
        std::vector<std::string> texts;
        for (const text::TextBox& box : text ? text->boxes : std::vector<text::TextBox>{}) {
            texts.push_back(box.text.toStdString());
        }
        return texts;
    }
};

inline ServiceAnswer readServiceAnswer(const std::string& body) {
    rapidjson::Document json;
    const bool isObject = !json.Parse(body.c_str()).HasParseError() && json.IsObject();
    const auto field = [&](const char* key) {
        return isObject && json.HasMember(key) && json[key].IsString() ? json[key].GetString() : "";
    };
    return {text::parseRecognisedText(body), field("engine"), field("error")};
}

}  // namespace autoscene::ocr::testkit
