// The `http` object against a loopback server that answers with what it received.

#include <QTemporaryDir>

#include "EchoServer.h"
#include "ScriptFixture.h"

namespace {

class Http : public autoscene::test::ScriptFixture {
protected:
    QString url(const char* path) const { return QString::fromStdString(server.url(path)); }

    autoscene::test::EchoServer server;
};

TEST_F(Http, GetReturnsTheBody) {
    const std::string refused = autoscene::test::EchoServer::refusedUrl("/");
    EXPECT_EQ(text(QStringLiteral("[http.get('%1'), http.get('%2'), http.get('%3')].join('|')")
                       .arg(url("/headers"), url("/missing"), QString::fromStdString(refused))),
              "||0||");
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
    EXPECT_EQ(text(QStringLiteral(R"(http.postJson('%1', {a: [1, "é"], b: {c: null}}))")
                       .arg(url("/echo"))),
              "application/json\n{\"a\":[1,\"é\"],\"b\":{\"c\":null}}");
    EXPECT_EQ(text(QStringLiteral("var o = {}; o.self = o; [http.postJson('%1', o),"
                                  " http.postJson('%1', undefined), http.postJson('%1', 'text')]"
                                  ".join('|')")
                       .arg(url("/echo"))),
              "||application/json\n\"text\"");
}

TEST_F(Http, DownloadWritesBytesAndMakesTheFolder) {
    QTemporaryDir dir;
    const QString file = dir.filePath("new/folder/body.bin");
    // The body arriving whole is Http.DownloadWritesTheWholeBodyAndReplacesTheFile's.
    EXPECT_EQ(text(QStringLiteral("http.download('%1', '%2')").arg(url("/large"), file)), file);
    EXPECT_EQ(text(QStringLiteral("http.download('%1', '')").arg(url("/large"))), "");
}

}  // namespace
