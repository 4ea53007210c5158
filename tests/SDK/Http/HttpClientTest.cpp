#include <arpa/inet.h>
#include <curl/curl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Http/HttpClient.h"
#include "Http/HttpException.h"
#include "Support/HttpTestServer.h"
#include "Support/OvWriteLog.h"
#include "Support/RefusingPort.h"
#include "Support/TemporaryFolder.h"

namespace {

using Answer = HttpTestServer::Answer;
using Delivery = HttpTestServer::Delivery;
using Request = HttpTestServer::Request;
using Security = HttpTestServer::Security;

auto failsWith(int code, const std::string& text) {
  return testing::Throws<HttpException>(testing::AllOf(testing::Property("code", &HttpException::getErrorCode, code),
                                                       testing::Property("text", &HttpException::getErrorText, text)));
}

auto failsWith(CURLcode code) { return failsWith(code, curl_easy_strerror(code)); }

auto failsWithStatus(int status) { return failsWith(status, "error response received from HTTP server"); }

HttpTestServer::Handler always(const Answer& answer) {
  return [answer](const Request&) { return answer; };
}

Answer echo(const Request& request) { return {.body = request.method + " " + request.target + " " + request.body}; }

struct Client : HttpClient {
  explicit Client(const std::string& url) { setURL(url); }
};

TEST(HttpClientBase, AUrlIsTakenApartAndPutTogether) {
  const struct {
    std::string url;
    bool useSSL;
    std::string host;
    int port;
    std::string object;
    std::string query;
    std::string composed;
  } cases[] = {
      {"http://h", false, "h", 80, "", "", "http://h:80"},
      {"https://h/", true, "h", 443, "/", "", "https://h:443/"},
      {"HTTP://h/a/b?c=d&e", false, "h", 80, "/a/b", "c=d&e", "http://h:80/a/b?c=d&e"},
      {"hTTpS://h:80/p", true, "h", 80, "/p", "", "https://h:80/p"},
      {"http://h:443/p", false, "h", 443, "/p", "", "http://h:443/p"},
  };
  for (const auto& expected : cases) {
    SCOPED_TRACE(expected.url);
    HttpClientBase base;
    base.setURL(expected.url);
    EXPECT_EQ(base.getUseSSL(), expected.useSSL);
    EXPECT_EQ(base.getHostName(), expected.host);
    EXPECT_EQ(base.getTcpPort(), expected.port);
    EXPECT_EQ(base.getObjectName(), expected.object);
    EXPECT_EQ(base.getQueryString(), expected.query);
    EXPECT_EQ(base.getURL(), expected.composed);
  }
}

TEST(HttpClientBase, AnUnusableUrlIsRefusedAndTheHostKept) {
  const struct {
    std::string url, text, protocol;
    int port;
  } cases[] = {
      {"ftp://other/", "The specified URL is invalid", "ftp", -1},
      {"httpsx://other:81/", "The specified URL is invalid", "httpsx", 81},
      {"other/path", "Invalid URL specified.", "http", 8080},
      {"https://other:70000/", "Invalid URL specified.", "http", 8080},
  };
  for (const auto& expected : cases) {
    SCOPED_TRACE(expected.url);
    HttpClientBase base;
    base.setURL("http://h:8080/p");
    EXPECT_THAT([&] { base.setURL(expected.url); }, failsWith(0, expected.text));
    EXPECT_EQ(base.getProtocol(), expected.protocol);
    EXPECT_EQ(base.getTcpPort(), expected.port);
    EXPECT_EQ(base.getHostName(), "h");
  }
}

TEST(HttpException, ACodeAloneMakesAText) { EXPECT_EQ(HttpException(-7).getErrorText(), "error -7 occurred"); }

TEST(HttpClient, AQueryGoesWithAGetOnlyAndTheHeadersWithBoth) {
  HttpTestServer server(echo);
  Client client(server.url("/object?key=a%20b"));
  client.setUserAgent("Agent/1");

  EXPECT_EQ(client.get(), "GET /object?key=a%20b ");
  EXPECT_EQ(client.post("<x/>"), "POST /object <x/>");
  EXPECT_EQ(client.sendRequest("POST", nullptr), "POST /object ");

  for (const Request& request : server.requests()) {
    EXPECT_EQ(request.get_header_value("User-Agent"), "Agent/1");
    EXPECT_EQ(request.get_header_value("Content-Type"), "text/xml");
  }
}

TEST(HttpClient, ABodyHasAllItsBytes) {
  std::string large(3'000'000, '\0');
  for (size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>('a' + i % 23);
  for (const std::string& body : {std::string(), std::string("\0\xff\r\n\0", 5), large}) {
    HttpTestServer server(always({.body = body}));
    EXPECT_TRUE(Client(server.url()).get() == body) << body.size();
  }
  HttpTestServer server(echo);
  EXPECT_TRUE(Client(server.url("/")).post(large) == "POST / " + large);
  HttpTestServer slow(always({.body = "byte by byte", .delivery = Delivery::kTrickle}));
  EXPECT_EQ(Client(slow.url()).get(), "byte by byte");
}

TEST(HttpClient, AnyStatusBut200IsAnError) {
  for (const int status : {201, 204, 206, 301, 302, 404, 500, 503}) {
    const std::string body = status == 204 ? "" : "a body";
    HttpTestServer server(always({.status = status, .body = body, .location = "/elsewhere"}));
    EXPECT_THAT([&] { Client(server.url()).get(); }, failsWithStatus(status));
    EXPECT_EQ(server.requests().size(), 1u) << status;
  }
}

class SecurityTest : public testing::TestWithParam<Security> {};
INSTANTIATE_TEST_SUITE_P(, SecurityTest, testing::Values(Security::kPlain, Security::kTls),
                         [](const auto& instance) { return instance.param == Security::kTls ? "Https" : "Http"; });

// The certificate is self-signed, and for another name than that of the URL.
TEST_P(SecurityTest, AllRequestsShareOneConnectionAndNothingElse) {
  HttpTestServer server(
      [](const Request& request) {
        return request.target == "/missing" ? Answer{.status = 404, .body = "page"} : echo(request);
      },
      GetParam());
  Client client(server.url("/first"));

  EXPECT_EQ(client.post("content"), "POST /first content");
  client.setObjectName("/missing");
  EXPECT_THAT([&] { client.get(); }, failsWithStatus(404));
  client.setURL(server.url("/second?q"));
  EXPECT_EQ(client.get(), "GET /second?q ");
  EXPECT_EQ(client.get(), "GET /second?q ");

  EXPECT_EQ(server.connections(), 1u);
}

TEST(HttpClient, AFailedTransferGivesTheCodeAndTextOfLibcurl) {
  const struct {
    const char* name;
    Answer answer;
    CURLcode code;
  } cases[] = {
      {"no answer", {.delivery = Delivery::kNone}, CURLE_GOT_NOTHING},
      {"cut in the body",
       {.body = std::string(1000, 'x'), .delivery = Delivery::kCut, .cutBehind = 500},
       CURLE_PARTIAL_FILE},
      {"an enormous size announced",
       {.body = "x", .delivery = Delivery::kCut, .cutBehind = 1, .announcedSize = 1'000'000'000'000'000},
       CURLE_PARTIAL_FILE},
      {"a body without an end", {.body = "x", .delivery = Delivery::kEndless}, CURLE_WRITE_ERROR},
  };
  for (const auto& expected : cases) {
    SCOPED_TRACE(expected.name);
    HttpTestServer server(always(expected.answer));
    EXPECT_THAT([&] { Client(server.url()).get(); }, failsWith(expected.code));
  }
  const RefusingPort port;
  Client client(port.url());
  EXPECT_THAT([&] { client.post("content"); }, failsWith(CURLE_COULDNT_CONNECT));
  HttpTestServer server(echo);
  client.setURL(server.url("/again"));
  EXPECT_EQ(client.get(), "GET /again ");
}

// A listener whose queue is full answers no further connect, as a host behind a silent firewall.
TEST(HttpClient, AConnectEndsWithItsTimeOut) {
  const auto newSocket = [] { return socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0); };
  std::vector<int> sockets{newSocket()};
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  ASSERT_EQ(bind(sockets[0], generic, length), 0);
  ASSERT_EQ(listen(sockets[0], 0), 0);
  ASSERT_EQ(getsockname(sockets[0], generic, &length), 0);
  for (int i = 0; i < 8; ++i) {
    sockets.push_back(newSocket());
    connect(sockets.back(), generic, length);
  }

  Client client("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)));
  EXPECT_EQ(client.getConnectTimeout(), 10);
  client.setConnectTimeout(1);
  EXPECT_THAT([&] { client.get(); }, failsWith(CURLE_OPERATION_TIMEDOUT));
  for (const int socket : sockets) close(socket);
}

TEST(HttpClient, AnOverlongUrlIsRefusedNotCut) {
  HttpTestServer server(echo);
  Client client(server.url("/"));
  const size_t rest = HttpClient::kMaximumUrlLength - client.getURL().size();
  client.setQueryString(std::string(rest - 1, 'q'));
  EXPECT_EQ(client.getURL().size(), 2047u);
  EXPECT_NO_THROW(client.get());

  client.setQueryString(client.getQueryString() + "q");
  EXPECT_THAT([&] { client.get(); }, failsWith(CURLE_URL_MALFORMAT));
  EXPECT_NO_THROW(client.post("x"));
  client.setObjectName("/" + std::string(rest, 'p'));
  EXPECT_THAT([&] { client.post("x"); }, failsWithStatus(414));  // which is the server's word
  client.setObjectName(client.getObjectName() + "p");
  EXPECT_THAT([&] { client.post("x"); }, failsWith(CURLE_URL_MALFORMAT));
  EXPECT_EQ(server.requests().size(), 2u);
}

TEST(HttpClient, ACraftedPartOfAUrlReachesNobody) {
  HttpTestServer server(echo);
  Client client(server.url());
  const std::string host = client.getHostName();
  const std::pair<std::string, std::string> cases[] = {
      {"user:secret@" + host, "/"},
      {host, "@" + host + "/"},
      {host + " ", "/"},
      {host + "\r\nX: y", "/"},
      {host, "/a\r\nX: y"},
      {host + "%0d%0aX: y", "/"},
      {host + std::string(1, '\0'), "/"},
      {host, std::string("/a\0b", 4)},
      {host, "/a?b c"},
  };
  for (const auto& [crafted, object] : cases) {
    client.setHostName(crafted);
    client.setObjectName(object);
    EXPECT_THAT([&] { client.get(); }, failsWith(CURLE_URL_MALFORMAT)) << crafted << object;
  }
  client.setURL(server.url("/a@b?c@d"));
  client.setUserAgent("agent\r\nX: y");
  EXPECT_THAT([&] { client.get(); }, failsWith(CURLE_BAD_FUNCTION_ARGUMENT));
  EXPECT_EQ(server.connections(), 0u);
  client.setUserAgent("agent");
  EXPECT_EQ(client.get(), "GET /a@b?c@d ");
}

TEST(HttpClient, TheExchangeIsLoggedAtLevel5Only) {
  const TemporaryFolder folder;
  const std::string log = folder.file("log");
  OvSetLogFile(log.c_str());
  HttpTestServer server(echo);
  Client client(server.url("/object"));

  OvSetLogLevel(4);
  client.post("first content");
  EXPECT_EQ(contentOf(log), "");
  OvSetLogLevel(5);
  client.post("second content");
  OvSetLogFile("");
  OvSetLogLevel(2);

  const std::string text = contentOf(log);
  EXPECT_THAT(text, testing::HasSubstr(server.url("/object")));
  EXPECT_THAT(text, testing::HasSubstr("second content"));
  EXPECT_THAT(text, testing::HasSubstr(": httpResponse, size=1, nmemb=27\n"));
}

TEST(HttpClient, ClientsOnSeveralThreadsDoNotMeet) {
  HttpTestServer plain(echo);
  HttpTestServer secure(echo, Security::kTls);
  std::vector<std::jthread> threads;
  for (const HttpTestServer* server : {&plain, &secure, &plain, &secure}) {
    threads.emplace_back([server, number = threads.size()] {
      Client client(server->url("/" + std::to_string(number)));
      for (int i = 0; i < 20; ++i) {
        const std::string content(static_cast<size_t>(i) * 1000, static_cast<char>('a' + i));
        EXPECT_NO_THROW(EXPECT_EQ(client.post(content), "POST /" + std::to_string(number) + " " + content));
      }
    });
  }
  threads.clear();
  EXPECT_EQ(plain.connections() + secure.connections(), 4u);
}

TEST(HttpClient, AnAnswerIsWaitedForUntilItComesOrTheServerGoes) {
  auto server = std::make_unique<HttpTestServer>(always({.body = "late", .stall = true}));
  Client client(server->url());
  std::jthread releasing([&] {
    server->waitForRequests(1);
    server->release();
  });
  EXPECT_EQ(client.get(), "late");
  releasing.join();

  server = std::make_unique<HttpTestServer>(always({.stall = true}));
  client.setURL(server->url());
  const std::jthread ending([&] {
    server->waitForRequests(1);
    server.reset();
  });
  EXPECT_THAT([&] { client.get(); }, failsWith(CURLE_GOT_NOTHING));
}

// What is done for the process would be undone in the middle of another thread's transfer.
TEST(HttpClient, ATransferOutlivesABrokenPipeAndLeavesTheProcessAlone) {
  struct sigaction during {};
  HttpTestServer server([&, client = pthread_self()](const Request&) {
    sigaction(SIGPIPE, nullptr, &during);
    pthread_kill(client, SIGPIPE);  // as the system does to a thread that writes
    return Answer{.body = "done"};
  });
  std::signal(SIGPIPE, SIG_DFL);  // which the server has ignored
  EXPECT_EQ(Client(server.url()).get(), "done");
  EXPECT_EQ(during.sa_handler, SIG_DFL);
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
}

}  // namespace
