#pragma once
// Blocking HTTP helpers on libcurl. Each call uses its own easy handle, so they may be
// called from any thread at once. Each takes HttpLimits, by default none: a transfer then
// waits as long as it takes. A transfer failure prints
// "curl_easy_perform() failed: <reason>" to standard error and the body received up to
// then is returned. GET, form POST and download do not verify the peer's certificate
// or host name; the JSON and multipart POSTs keep libcurl's verification.

#include <chrono>
#include <map>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace autoscene::http {

// Header name to value; each entry is sent as the line "name: value".
using HttpHeaders = std::map<std::string, std::string>;

// Field name to value, sent in ascending name order.
using HttpFields = std::map<std::string, std::string>;

// Bounds of one transfer. Zero time-outs wait as long as it takes; a stop request ends
// the transfer within about 50 ms, with the error "stopped".
struct HttpLimits {
    std::chrono::milliseconds connectTimeout{};
    std::chrono::milliseconds timeout{};  // the whole transfer, connecting included
    std::stop_token stop;
};

// Global libcurl set-up; runs once however often and from however many threads it is
// called. Every helper calls it, so calling it at start-up only moves the cost there.
void initHttpOnce();

// Writes the body to `filePath` (replaced). False when the file cannot be opened
// ("Failed to open file for writing." on standard error) or the transfer failed.
bool httpDownloadToFile(const std::string& url, const HttpHeaders& headers,
                        const std::string& filePath, const HttpLimits& limits = {});

std::string httpGet(const std::string& url, const HttpHeaders& headers,
                    const HttpLimits& limits = {});

// Body "name=value&name=value" in ascending name order, neither part escaped.
std::string httpPostForm(const std::string& url, const HttpHeaders& headers,
                         const HttpFields& fields, const HttpLimits& limits = {});

// Adds "Content-Type: application/json".
std::string httpPostJson(const std::string& url, const HttpHeaders& headers,
                         const std::string& jsonText, const HttpLimits& limits = {});

// One file part of a multipart/form-data body, its content taken from memory.
struct HttpFilePart {
    std::string fieldName;
    std::string fileName;
    std::string contentType;  // empty: libcurl's choice from the file name
    std::string_view content;
};

struct HttpResponse {
    std::string body;                      // as far as it arrived
    long status = 0;                       // HTTP status; 0 when no answer came
    std::string error;                     // libcurl's text for a failed transfer; empty on success
    std::vector<std::string> headerLines;  // response header lines without CR LF
};

// GET that keeps the response's header lines; a failure is printed as by httpGet.
HttpResponse httpGetWithHeaders(const std::string& url, const HttpHeaders& headers,
                                const HttpLimits& limits = {});

// multipart/form-data POST of `file` followed by `textFields`.
HttpResponse httpPostMultipart(const std::string& url, const HttpHeaders& headers,
                               const HttpFilePart& file, const HttpFields& textFields = {},
                               const HttpLimits& limits = {});

}  // namespace autoscene::http
