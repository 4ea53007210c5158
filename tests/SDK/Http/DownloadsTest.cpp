#include <cstdlib>

#include "Http/Downloads.h"
#include "Support/HttpTestServer.h"
#include "Support/OvWriteLog.h"
#include "Support/RefusingPort.h"
#include "Support/TemporaryFolder.h"

namespace {

using Answer = HttpTestServer::Answer;
using Request = HttpTestServer::Request;
using testing::EndsWith;

const std::string kBody("the\0body\r\n", 10);

Answer site(const Request& request) {
  if (request.target == "/moved") return {.status = 301, .body = "moved", .location = "/file?q=1"};
  if (request.target == "/cut")
    return {.body = std::string(100'000, 'x'), .delivery = HttpTestServer::Delivery::kCut, .cutBehind = 50'000};
  if (request.target == "/empty") return {};
  if (request.target == "/file?q=1") return {.body = kBody};
  return {.status = 404, .body = "error page"};
}

class DownloadsTest : public testing::Test {
 protected:
  DownloadsTest() { OvSetLogFile(log_.c_str()); }
  ~DownloadsTest() override { OvSetLogFile(""); }

  const TemporaryFolder folder_;
  const TemporaryFolder logFolder_;
  const std::string log_ = logFolder_.file("log");
  const std::string path_ = folder_.file("file");
  HttpTestServer server_{site};
};

TEST_F(DownloadsTest, AFileHasTheBodyAndItsOwnerAlone) {
  writeFile(path_, "old");
  ASSERT_TRUE(ovutils_download_url(server_.url("/file?q=1").c_str(), path_.c_str()));
  EXPECT_EQ(contentOf(path_), kBody);
  EXPECT_EQ(modeOf(path_), 0600u);
  EXPECT_EQ(server_.requests().at(0).get_header_value("User-Agent"), "OVTSC");
  EXPECT_EQ(contentOf(log_), "");
}

TEST_F(DownloadsTest, AFailedFetchIsLoggedAndLeavesWhatWasThere) {
  const RefusingPort port;
  const struct {
    std::string url, reason;
  } cases[] = {
      {server_.url("/missing"), "errorCode=404, errorText=error response received from HTTP server\n"},
      {server_.url("/moved"), "errorCode=301, errorText=error response received from HTTP server\n"},
      {"ftp://h/", "errorCode=0, errorText=The specified URL is invalid\n"},
      {port.url(), "errorCode=7, errorText=Couldn't connect to server\n"},
  };
  for (const auto& [url, reason] : cases) {
    SCOPED_TRACE(url);
    writeFile(path_, "old");
    EXPECT_FALSE(ovutils_download_url(url.c_str(), path_.c_str()));
    EXPECT_EQ(contentOf(path_), "old");
    EXPECT_THAT(contentOf(log_), EndsWith(": ovutils_download_url: HttpException, " + reason));

    void* buffer = &buffer;
    size_t size = 1;
    EXPECT_FALSE(ovutils_download_url_to_buffer(url.c_str(), &buffer, &size));
    EXPECT_EQ(buffer, nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_THAT(contentOf(log_), EndsWith(": ovutils_download_url_to_buffer: HttpException, " + reason));
  }
}

TEST_F(DownloadsTest, AFailedWriteLeavesNothingBehind) {
  std::filesystem::create_directory(path_);  // no file can take its place
  EXPECT_FALSE(ovutils_download_url(server_.url("/file?q=1").c_str(), path_.c_str()));
  EXPECT_FALSE(ovutils_download_url(server_.url("/file?q=1").c_str(), folder_.file("missing/file").c_str()));
  EXPECT_TRUE(std::filesystem::remove(path_));
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(DownloadsTest, ABufferHasTheBody) {
  for (const auto& [target, body] : {std::pair{"/file?q=1", kBody}, std::pair{"/empty", std::string()}}) {
    void* buffer = nullptr;
    size_t size = 99;
    ASSERT_TRUE(ovutils_download_url_to_buffer(server_.url(target).c_str(), &buffer, &size));
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(std::string(static_cast<const char*>(buffer), size), body);
    free(buffer);
  }
  EXPECT_EQ(server_.requests().at(0).get_header_value("User-Agent"), "OvClient");
}

TEST_F(DownloadsTest, TheOtherVariantTakesWhateverIsAnswered) {
  const std::pair<const char*, std::string> cases[] = {
      {"/file?q=1", kBody}, {"/moved", kBody}, {"/missing", "error page"}, {"/empty", ""}};
  for (const auto& [target, body] : cases) {
    SCOPED_TRACE(target);
    writeFile(path_, "a longer text that was there before");
    EXPECT_TRUE(ovutilsext_download_url(server_.url(target).c_str(), path_.c_str()));
    EXPECT_EQ(contentOf(path_), body);
  }
  EXPECT_TRUE(ovutilsext_download_url(server_.url().c_str(), folder_.file("new").c_str()));
  EXPECT_EQ(modeOf(folder_.file("new")), 0600u);
}

TEST_F(DownloadsTest, TheOtherVariantKeepsAPartAndLogsNothing) {
  EXPECT_FALSE(ovutilsext_download_url(server_.url("/cut").c_str(), path_.c_str()));
  const std::string part = contentOf(path_);
  EXPECT_GT(part.size(), 49'000u);
  EXPECT_EQ(part, std::string(part.size(), 'x'));
  EXPECT_FALSE(ovutilsext_download_url(server_.url("/file?q=1").c_str(), "/dev/full"));
  EXPECT_FALSE(ovutilsext_download_url("file:///dev/zero", "/dev/null"));  // which never ends
  EXPECT_FALSE(ovutilsext_download_url(RefusingPort().url().c_str(), path_.c_str()));
  EXPECT_EQ(contentOf(path_), "");
  EXPECT_EQ(contentOf(log_), "");
}

TEST_F(DownloadsTest, TheOtherVariantFetchesNothingItCannotWrite) {
  EXPECT_FALSE(ovutilsext_download_url(server_.url().c_str(), folder_.file("missing/file").c_str()));
  EXPECT_EQ(server_.connections(), 0u);
}

TEST_F(DownloadsTest, TheOtherVariantAsksTheCertificateForTheNameOnly) {
  HttpTestServer secure(site, HttpTestServer::Security::kTls);  // its certificate is for "localhost"
  const std::string named = "https://localhost:" + std::to_string(secure.port()) + "/file?q=1";
  EXPECT_TRUE(ovutilsext_download_url(named.c_str(), path_.c_str()));
  EXPECT_EQ(contentOf(path_), kBody);
  EXPECT_FALSE(ovutilsext_download_url(secure.url().c_str(), path_.c_str()));
}

}  // namespace
