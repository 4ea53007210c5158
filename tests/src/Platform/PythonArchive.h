#pragma once

#include <string>
#include <vector>

#include "Platform/KeyedArchive.h"
#include "Support/ChildProcess.h"

/// What tests/Support/keyed_archive.py prints for `command` and `path`, or the words it fails with.
inline std::string runPythonArchive(const std::string& command, const std::string& path, const std::string& json = "") {
  ChildProcess script("/usr/bin/python3", {ORVANE_KEYED_ARCHIVE, command, path}, json);
  return script.end() == 0 ? script.output() : script.errors();
}

inline orvane::KeyedObject openArchive(const std::string& bytes,
                                       const std::map<std::string, std::string>& renamed = {}) {
  return orvane::openKeyedArchive({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()}, renamed);
}

/// The words of the KeyedArchiveError that `act` throws; empty if it throws none.
template <typename Act>
std::string failureOf(Act act) {
  try {
    act();
    return "";
  } catch (const orvane::KeyedArchiveError& error) {
    return error.what();
  }
}
