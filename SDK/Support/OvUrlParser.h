#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

/// Splits a URL or a link into its parts. Nothing is percent-decoded, and no part is checked but the port.
///
/// The first colon behind the scheme is taken for the port's, wherever it stands: a query value must be free of colons.
/// Likewise a ":///" anywhere in the text wins over an earlier "://". The port is read as atoi would: blanks and a sign
/// may stand in front of its digits, and anything behind them up to the path is passed over.
///
/// An object serves one thread at a time; several objects are independent.
class OvUrlParser {
 public:
  /// Fills all parts from `text`, replacing what an earlier call left. A text that is refused leaves the parts as far
  /// as they were read.
  /// @throws OvException code 0, "Invalid URL specified.", if `text` has no "://" or a port outside 1 to 65535, or if
  ///         its value-less query parts make keys that would take memory out of all proportion to the text.
  void parse(const std::string& text);

  const std::string& url() const { return url_; }        ///< the whole text
  const std::string& scheme() const { return scheme_; }  ///< what stands before "://" or ":///"
  const std::string& host() const { return host_; }      ///< empty if not found
  int32_t port() const { return port_; }                 ///< -1 if the text names none
  /// With its leading slash, or empty. What stands between marker and "?" without any slash is a path without one.
  const std::string& path() const { return path_; }
  const std::string& query() const { return query_; }  ///< without its question mark, or empty
  /// The query's pairs; of a key that stands there twice, the first.
  ///
  /// A part without "=" runs into the pair behind it, which is also kept by itself: "a&b=c" gives "a&b" and "b", both
  /// of value "c". With no "=" in any part behind it either, the part is a key of its own with an empty value.
  const std::map<std::string, std::string>& parameters() const { return parameters_; }

 private:
  void parseAuthority(size_t position);
  void parsePathAndQuery(size_t position);
  void parseParameters();

  std::string url_;
  std::string host_;
  int32_t port_ = -1;
  std::string path_;
  std::string query_;
  std::string scheme_;
  std::map<std::string, std::string> parameters_;
};
