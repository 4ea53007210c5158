#pragma once

#include <string>

/// The parts of a URL and the settings of a request. Holds no connection. One thread at a time.
class HttpClientBase {
 public:
  HttpClientBase() = default;
  virtual ~HttpClientBase() = default;

  /// Splits `url` into the fields below. A URL without a port gets 80 for http and 443 for https, one without a path an
  /// empty object name. The scheme may be written in any letter case.
  /// @throws HttpException with the parser's code and text, which leaves all fields as they were; or 0 and "The
  ///         specified URL is invalid" for a scheme other than http and https, which has changed the protocol and the
  ///         port (-1 if there is none) already.
  void setURL(const std::string& url);
  /// The URL that the fields describe, always with its port, and the query if there is one.
  std::string getURL() const;

  const std::string& getProtocol() const { return protocol_; }
  bool getUseSSL() const { return useSSL_; }
  void setUseSSL(bool useSSL) { useSSL_ = useSSL; }
  const std::string& getHostName() const { return hostName_; }
  void setHostName(const std::string& hostName) { hostName_ = hostName; }
  int getTcpPort() const { return tcpPort_; }
  void setTcpPort(int tcpPort) { tcpPort_ = tcpPort; }
  const std::string& getObjectName() const { return objectName_; }
  void setObjectName(const std::string& objectName) { objectName_ = objectName; }
  const std::string& getQueryString() const { return queryString_; }
  void setQueryString(const std::string& queryString) { queryString_ = queryString; }
  const std::string& getUserAgent() const { return userAgent_; }
  void setUserAgent(const std::string& userAgent) { userAgent_ = userAgent; }
  const std::string& getContentType() const { return contentType_; }
  void setContentType(const std::string& contentType) { contentType_ = contentType; }
  int getConnectTimeout() const { return connectTimeout_; }
  void setConnectTimeout(int seconds) { connectTimeout_ = seconds; }

 protected:
  std::string getURLWithoutQuery() const;

 private:
  std::string protocol_;
  bool useSSL_ = false;
  std::string hostName_;
  int tcpPort_ = 80;
  std::string objectName_ = "/";
  std::string queryString_;
  std::string userAgent_ = "OvClient";
  std::string contentType_ = "text/xml";
  int connectTimeout_ = 10;
};
