#pragma once

#include <string>

#include "Model/OvLocation.h"

/// One location in the summary of a manual connection, as texts.
class ManualConnectionInfoLocationItemViewController {
 public:
  ManualConnectionInfoLocationItemViewController(const OvLocation& location, bool isDefault);

  const std::string& title() const { return _title; }
  const std::string& protocol() const { return _protocol; }
  const std::string& port() const { return _port; }
  const std::string& servers() const { return _servers; }  ///< one a line
  const std::string& natSupport() const { return _natSupport; }
  const std::string& rdpOverSsl() const { return _rdpOverSsl; }
  const std::string& proxy() const { return _proxy; }  ///< its address, or No

 private:
  std::string _title;
  std::string _protocol;
  std::string _port;
  std::string _servers;
  std::string _natSupport;
  std::string _rdpOverSsl;
  std::string _proxy;
};
