#include "Crypto/crypto.h"
#include "Files/OvSettings.h"
#include "Support/HttpTestServer.h"
#include "Support/TemporaryFolder.h"

namespace {

std::string urlLine(const std::string& url) {
  char out[2049];
  crypto_encrypt1024(url.c_str(), out, sizeof out);
  return "url:u:" + std::string(out) + "\n";
}

// Serves /<n>, a document that leads to /<n-1>; /0 leads nowhere, /loop to itself.
class LaunchFileUrl : public testing::Test {
 protected:
  HttpTestServer::Answer answerTo(const std::string& target) {
    HttpTestServer::Answer answer;
    if (target == "/missing") {
      answer.status = 404;
    } else if (target == "/loop") {
      answer.body = urlLine(server_.url("/loop"));
    } else {
      const int number = std::stoi(target.substr(1));
      answer.body = "domain:u:document " + std::to_string(number) + "\n";
      answer.body = number > 0 ? answer.body + urlLine(server_.url("/" + std::to_string(number - 1)))
                               : orvane::encipheredContainer(answer.body + "deletefile:i:1\n");
    }
    return answer;
  }

  int load(const std::string& document) { return settings_.loadOvlBuffer(document.data(), document.size()); }

  HttpTestServer server_{[this](const HttpTestServer::Request& request) { return answerTo(request.target); }};
  OvSettings settings_;
};

TEST_F(LaunchFileUrl, TheFetchedDocumentReplacesTheOneThatNamedIt) {
  EXPECT_EQ(load("username:u:lost\n" + urlLine(server_.url("/2"))), 1);
  EXPECT_STREQ(settings_.getDomain(), "document 0");
  EXPECT_EQ(settings_.getUsername(), nullptr);
  EXPECT_EQ(settings_.getURL(), nullptr);
}

TEST_F(LaunchFileUrl, TheHopsAreLimited) {
  EXPECT_EQ(load(urlLine(server_.url("/7"))), 1);
  EXPECT_EQ(load(urlLine(server_.url("/8"))), 0);
  const size_t before = server_.requests().size();
  EXPECT_EQ(load(urlLine(server_.url("/loop"))), 0);
  EXPECT_EQ(server_.requests().size() - before, size_t{OVSETTINGS_MAXIMUM_HOPS});
}

TEST_F(LaunchFileUrl, AFetchThatFailsLeavesTheDocumentThatNamedIt) {
  EXPECT_EQ(load("domain:u:first\n" + urlLine(server_.url("/missing"))), 0);
  EXPECT_STREQ(settings_.getDomain(), "first");
  EXPECT_EQ(settings_.getURL(), server_.url("/missing"));
  EXPECT_EQ(load("domain:u:first\n" + urlLine("file:///etc/hostname")), 0);
}

TEST_F(LaunchFileUrl, AUrlIsLoadedDirectly) {
  settings_.setURL(server_.url("/1").c_str());
  EXPECT_EQ(settings_.loadOvlURL(settings_.getURL()), 1);
  EXPECT_STREQ(settings_.getDomain(), "document 0");
  EXPECT_EQ(settings_.loadOvlURL(server_.url("/missing").c_str()), 0);
  EXPECT_EQ(settings_.loadOvlURL(nullptr), 0);
  EXPECT_STREQ(settings_.getDomain(), "document 0");
}

TEST_F(LaunchFileUrl, WhetherTheFileGoesIsTheFetchedDocumentsMatter) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.ovl");
  writeFile(path, "deletefile:i:1\n" + urlLine(server_.url("/missing")));
  EXPECT_EQ(settings_.loadOvlFile(path.c_str()), 0);
  EXPECT_TRUE(std::filesystem::exists(path));
  writeFile(path, urlLine(server_.url("/0")));
  EXPECT_EQ(settings_.loadOvlFile(path.c_str()), 1);
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
