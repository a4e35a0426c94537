#include "http/Http.h"

#include <curl/curl.h>

#include <cstdio>
#include <memory>
#include <mutex>

namespace autoscene::http {

namespace {

struct EasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct HeaderListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
struct MimeDeleter {
    void operator()(curl_mime* mime) const { curl_mime_free(mime); }
};
struct FileDeleter {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using EasyHandle = std::unique_ptr<CURL, EasyDeleter>;

// A multi handle driving one easy handle, detached again before both are released.
class SingleTransfer {
public:
    explicit SingleTransfer(CURL* easy) : multi_(curl_multi_init()), easy_(easy) {
        if (multi_ != nullptr) {
            curl_multi_add_handle(multi_, easy_);
        }
    }
    ~SingleTransfer() {
        if (multi_ != nullptr) {
            curl_multi_remove_handle(multi_, easy_);
            curl_multi_cleanup(multi_);
        }
    }
    SingleTransfer(const SingleTransfer&) = delete;
    SingleTransfer& operator=(const SingleTransfer&) = delete;

    // Empty on success, else why it failed; looks at `stop` between short waits.
    std::string run(const std::stop_token& stop) {
        constexpr int kPollMs = 50;
        if (multi_ == nullptr) {
            return "curl_multi_init failed";
        }
        int running = 1;
        while (running > 0) {
            if (curl_multi_perform(multi_, &running) != CURLM_OK) {
                return "curl_multi_perform failed";
            }
            if (running == 0) {
                break;
            }
            if (stop.stop_requested()) {
                return "stopped";
            }
            curl_multi_poll(multi_, nullptr, 0, kPollMs, nullptr);
        }
        int queued = 0;
        while (const CURLMsg* message = curl_multi_info_read(multi_, &queued)) {
            if (message->msg == CURLMSG_DONE && message->data.result != CURLE_OK) {
                return curl_easy_strerror(message->data.result);
            }
        }
        return {};
    }

private:
    CURLM* multi_;
    CURL* easy_;
};
using HeaderList = std::unique_ptr<curl_slist, HeaderListDeleter>;

enum class PeerVerification { Off, LibraryDefault };

size_t appendToString(char* data, size_t size, size_t count, void* userData) {
    static_cast<std::string*>(userData)->append(data, size * count);
    return size * count;
}

size_t appendHeaderLine(char* data, size_t size, size_t count, void* userData) {
    std::string line(data, size * count);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
        line.pop_back();
    }
    if (!line.empty()) {
        static_cast<std::vector<std::string>*>(userData)->push_back(std::move(line));
    }
    return size * count;
}

size_t writeToFile(char* data, size_t size, size_t count, void* userData) {
    return std::fwrite(data, size, count, static_cast<std::FILE*>(userData)) * size;
}

// One transfer: the easy handle and the header list live exactly as long as the request.
// Should libcurl fail to create the handle, options are dropped and perform() reports it.
class Request {
public:
    Request(const std::string& url, const HttpHeaders& headers, PeerVerification verification,
            const HttpLimits& limits = {})
        : easy_(curl_easy_init()), stop_(limits.stop) {
        set(CURLOPT_URL, url.c_str());
        setLimits(limits);
        if (verification == PeerVerification::Off) {
            set(CURLOPT_SSL_VERIFYPEER, 0L);
            set(CURLOPT_SSL_VERIFYHOST, 0L);
        }
        for (const auto& [name, value] : headers) {
            addHeader(name + ": " + value);
        }
    }

    CURL* easy() const { return easy_.get(); }

    template <typename Value>
    void set(CURLoption option, Value value) {
        if (easy_) {
            curl_easy_setopt(easy_.get(), option, value);
        }
    }

    void setBody(const std::string& body) {
        set(CURLOPT_POSTFIELDS, body.c_str());
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    }

    void addHeader(const std::string& line) {
        curl_slist* extended = curl_slist_append(headerList_.get(), line.c_str());
        if (extended != nullptr) {
            // `extended` heads the same list (or a new one): hand it over without freeing.
            static_cast<void>(headerList_.release());
            headerList_.reset(extended);
        }
    }

    void setLimits(const HttpLimits& limits) {
        if (limits.connectTimeout.count() > 0) {
            set(CURLOPT_CONNECTTIMEOUT_MS, long(limits.connectTimeout.count()));
        }
        if (limits.timeout.count() > 0) {
            set(CURLOPT_TIMEOUT_MS, long(limits.timeout.count()));
        }
    }

    // Empty on success, else libcurl's text for the failure ("stopped" when `stop` ended it).
    std::string performQuietly() {
        if (!easy_) {
            return "curl_easy_init failed";
        }
        set(CURLOPT_HTTPHEADER, headerList_.get());
        if (stop_.stop_possible()) {
            return SingleTransfer(easy_.get()).run(stop_);
        }
        const CURLcode code = curl_easy_perform(easy_.get());
        return code == CURLE_OK ? std::string() : curl_easy_strerror(code);
    }

    bool perform() {
        const std::string error = performQuietly();
        if (!error.empty()) {
            std::fprintf(stderr, "curl_easy_perform() failed: %s\n", error.c_str());
        }
        return error.empty();
    }

    // The body as far as it arrived, also when the transfer failed half-way.
    std::string performCollectingBody() {
        std::string body;
        set(CURLOPT_WRITEFUNCTION, appendToString);
        set(CURLOPT_WRITEDATA, &body);
        perform();
        return body;
    }

private:
    EasyHandle easy_;
    HeaderList headerList_;
    std::stop_token stop_;
};

std::string formBody(const HttpFields& fields) {
    std::string body;
    for (const auto& [name, value] : fields) {
        if (!body.empty()) {
            body += '&';
        }
        body += name;
        body += '=';
        body += value;
    }
    return body;
}

}  // namespace

void initHttpOnce() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

bool httpDownloadToFile(const std::string& url, const HttpHeaders& headers,
                        const std::string& filePath, const HttpLimits& limits) {
    initHttpOnce();
    const std::unique_ptr<std::FILE, FileDeleter> file(std::fopen(filePath.c_str(), "wb"));
    if (!file) {
        std::fputs("Failed to open file for writing.\n", stderr);
        return false;
    }
    Request request(url, headers, PeerVerification::Off, limits);
    request.set(CURLOPT_WRITEFUNCTION, writeToFile);
    request.set(CURLOPT_WRITEDATA, file.get());
    return request.perform();
}

std::string httpGet(const std::string& url, const HttpHeaders& headers, const HttpLimits& limits) {
    initHttpOnce();
    Request request(url, headers, PeerVerification::Off, limits);
    return request.performCollectingBody();
}

HttpResponse httpGetWithHeaders(const std::string& url, const HttpHeaders& headers,
                                const HttpLimits& limits) {
    initHttpOnce();
    Request request(url, headers, PeerVerification::Off, limits);
    HttpResponse response;
    request.set(CURLOPT_HEADERFUNCTION, appendHeaderLine);
    request.set(CURLOPT_HEADERDATA, &response.headerLines);
    request.set(CURLOPT_WRITEFUNCTION, appendToString);
    request.set(CURLOPT_WRITEDATA, &response.body);
    response.error = request.performQuietly();
    if (!response.error.empty()) {
        std::fprintf(stderr, "curl_easy_perform() failed: %s\n", response.error.c_str());
    } else if (request.easy() != nullptr) {
        curl_easy_getinfo(request.easy(), CURLINFO_RESPONSE_CODE, &response.status);
    }
    return response;
}

std::string httpPostForm(const std::string& url, const HttpHeaders& headers,
                         const HttpFields& fields, const HttpLimits& limits) {
    initHttpOnce();
    const std::string body = formBody(fields);
    Request request(url, headers, PeerVerification::Off, limits);
    request.set(CURLOPT_POST, 1L);
    request.setBody(body);
    return request.performCollectingBody();
}

std::string httpPostJson(const std::string& url, const HttpHeaders& headers,
                         const std::string& jsonText, const HttpLimits& limits) {
    initHttpOnce();
    Request request(url, headers, PeerVerification::LibraryDefault, limits);
    request.setBody(jsonText);
    request.addHeader("Content-Type: application/json");
    return request.performCollectingBody();
}

HttpResponse httpPostMultipart(const std::string& url, const HttpHeaders& headers,
                               const HttpFilePart& file, const HttpFields& textFields,
                               const HttpLimits& limits) {
    initHttpOnce();
    Request request(url, headers, PeerVerification::LibraryDefault, limits);
    const std::unique_ptr<curl_mime, MimeDeleter> mime(curl_mime_init(request.easy()));
    curl_mimepart* filePart = curl_mime_addpart(mime.get());
    curl_mime_name(filePart, file.fieldName.c_str());
    curl_mime_filename(filePart, file.fileName.c_str());
    curl_mime_data(filePart, file.content.data(), file.content.size());
    if (!file.contentType.empty()) {
        curl_mime_type(filePart, file.contentType.c_str());
    }
    for (const auto& [name, value] : textFields) {
        curl_mimepart* textPart = curl_mime_addpart(mime.get());
        curl_mime_name(textPart, name.c_str());
        curl_mime_data(textPart, value.data(), value.size());
    }
    request.set(CURLOPT_MIMEPOST, mime.get());
    HttpResponse response;
    request.set(CURLOPT_WRITEFUNCTION, appendToString);
    request.set(CURLOPT_WRITEDATA, &response.body);
    response.error = request.performQuietly();
    if (request.easy() != nullptr) {
        curl_easy_getinfo(request.easy(), CURLINFO_RESPONSE_CODE, &response.status);
    }
    return response;
}

}  // namespace autoscene::http
