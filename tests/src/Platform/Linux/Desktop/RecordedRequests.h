#pragma once

#include "Platform/Linux/Desktop/ApplicationService.h"

/// A handler that tells of each request in words, of each address in its own.
inline orvane::ApplicationRequests recordedBy(const std::function<void(const std::string&)>& record) {
  return {.activate = [=](const auto& token) { record("activate " + token); },
          .open =
              [=](const auto& addresses, const auto& token) {
                for (const std::string& address : addresses) record(address + " " + token);
              },
          .action = [=](const auto& name, const auto& token) { record(name + " " + token); }};
}
