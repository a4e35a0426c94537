// The `http` object against a loopback server that answers with what it received.

#include <httplib.h>

#include <QFile>
#include <QTemporaryDir>
#include <thread>

#include "LoopbackPort.h"
#include "ScriptFixture.h"

using autoscene::test::ScriptFixture;

namespace {

class Http : public ScriptFixture {
protected:
    void SetUp() override {
        ScriptFixture::SetUp();
        server_.Get("/hello", [](const httplib::Request&, httplib::Response& response) {
            response.set_content("héllo", "text/plain; charset=utf-8");
        });
        server_.Get("/bytes", [](const httplib::Request&, httplib::Response& response) {
            response.set_content(std::string("\x00\x01\xff", 3), "application/octet-stream");
        });
        server_.Post("/echo", [](const httplib::Request& request, httplib::Response& response) {
            response.set_content(request.get_header_value("Content-Type") + "\n" + request.body,
                                 "text/plain");
        });
        port_ = server_.bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { server_.listen_after_bind(); });
    }
    void TearDown() override {
        server_.stop();
        thread_.join();
    }
    QString url(const QString& path) const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path);
    }

private:
    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
};

TEST_F(Http, GetReturnsTheBody) {
    EXPECT_EQ(text(QStringLiteral("http.get('%1')").arg(url("/hello"))), "héllo");
    EXPECT_EQ(text(QStringLiteral("http.get('%1')").arg(url("/missing"))), "");
    const QString refused =
        QStringLiteral("http://127.0.0.1:%1/").arg(autoscene::test::unusedLoopbackPort());
    EXPECT_EQ(text(QStringLiteral("http.get('%1')").arg(refused)), "");
}

TEST_F(Http, PostSendsMembersAsFormFields) {
    EXPECT_EQ(text(QStringLiteral(R"(http.post('%1', {s: "a b", n: 1234567, f: 0.5, t: true,
        o: {x: 1}, u: null}))")
                       .arg(url("/echo"))),
              "application/x-www-form-urlencoded\nf=0.5&n=1.23457e+06&o=&s=a b&t=true&u=");
    EXPECT_EQ(text(QStringLiteral("http.post('%1', 'not an object')").arg(url("/echo"))),
              "application/x-www-form-urlencoded\n");
}

TEST_F(Http, PostJsonSendsCompactJson) {
    EXPECT_EQ(text(QStringLiteral(R"(http.postJson('%1', {a: [1, "x"], b: {c: null}}))")
                       .arg(url("/echo"))),
              "application/json\n{\"a\":[1,\"x\"],\"b\":{\"c\":null}}");
    EXPECT_EQ(
        text(QStringLiteral("var o = {}; o.self = o; http.postJson('%1', o)").arg(url("/echo"))),
        "");
    EXPECT_EQ(text(QStringLiteral("http.postJson('%1', undefined)").arg(url("/echo"))), "");
    EXPECT_EQ(text(QStringLiteral("http.postJson('%1', 'text')").arg(url("/echo"))),
              "application/json\n\"text\"");
}

TEST_F(Http, DownloadWritesBytesAndMakesTheFolder) {
    QTemporaryDir dir;
    const QString file = dir.filePath("new/folder/body.bin");
    EXPECT_EQ(text(QStringLiteral("http.download('%1', '%2')").arg(url("/bytes"), file)), file);
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), QByteArray("\x00\x01\xff", 3));
    EXPECT_EQ(text(QStringLiteral("http.download('%1', '')").arg(url("/bytes"))), "");
}

}  // namespace
