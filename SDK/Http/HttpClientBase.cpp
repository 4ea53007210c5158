#include "Http/HttpClientBase.h"

#include <strings.h>

#include "Http/HttpException.h"
#include "Support/OvException.h"
#include "Support/OvUrlParser.h"

namespace {

constexpr int kHttpPort = 80;
constexpr int kHttpsPort = 443;

OvUrlParser parsed(const std::string& url) {
  OvUrlParser parser;
  try {
    parser.parse(url);
  } catch (const OvException& exception) {
    throw HttpException(exception.getErrorCode(), exception.getErrorText());
  }
  return parser;
}

}  // namespace

void HttpClientBase::setURL(const std::string& url) {
  const OvUrlParser parser = parsed(url);
  protocol_ = parser.scheme();
  tcpPort_ = parser.port();
  const bool isHttps = strcasecmp(protocol_.c_str(), "https") == 0;
  if (!isHttps && strcasecmp(protocol_.c_str(), "http") != 0) throw HttpException(0, "The specified URL is invalid");

  if (tcpPort_ == -1) tcpPort_ = isHttps ? kHttpsPort : kHttpPort;
  useSSL_ = isHttps;
  hostName_ = parser.host();
  objectName_ = parser.path();
  queryString_ = parser.query();
}

std::string HttpClientBase::getURL() const {
  return queryString_.empty() ? getURLWithoutQuery() : getURLWithoutQuery() + "?" + queryString_;
}

std::string HttpClientBase::getURLWithoutQuery() const {
  return (useSSL_ ? "https://" : "http://") + hostName_ + ":" + std::to_string(tcpPort_) + objectName_;
}
