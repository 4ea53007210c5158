#pragma once

#include <string>

#include "Links/OvUrlSchemeHandler.h"

/// The grammar of the links of the scheme "orvane" (docs/links.md): understands a link and calls one operation of a
/// handler. Keeps nothing from one link to the next. One thread at a time.
class OvUrlScheme {
 public:
  /// `handler` is not owned, must outlive this object, and must not be null.
  explicit OvUrlScheme(OvUrlSchemeHandler* handler) : handler_(handler) {}

  /// Checks the link, then calls the handler, and returns when the handler's operation does.
  /// @throws OvException of code 0, before the handler is called: "Invalid URL specified." for what is no URL or one of
  ///         another scheme, "invalid URL" for an unknown command, "... is absent in query string." for the first key
  ///         that the command needs and the link lacks. And whatever the handler throws.
  void parseURL(const std::string& text);

 private:
  OvUrlSchemeHandler* handler_;
};
