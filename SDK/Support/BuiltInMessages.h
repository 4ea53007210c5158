#pragma once

/// The messages of the protocol layer, as indexes for i18n_get_locale_string.
enum BuiltInMessage : int {
  kMessageErrorOccurred = 0,  ///< holds "%d" for the code, except in Chinese
  kMessageAccessDenied = 1,
  kMessageInvalidData = 2,
  kMessageNoLogonServers = 3,
  kMessageUnsupportedProtocol = 4,
};

/// A message in the language of `locale` (`en-us`, `de-de`, `es-es`, `fr-fr`, `ja-jp`, `ko-kr`, `zh-cn`, `zh-hk`; any
/// other name, also one in other letter case, or null gives English), as UTF-8.
///
/// The text is static and is never freed. `index` is 0 to 4; for any other the result is an empty text. Any thread.
const char* i18n_get_locale_string(const char* locale, int index);
