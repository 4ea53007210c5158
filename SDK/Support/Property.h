#pragma once

#include <string>
#include <utility>

/// @file
/// Declares one field of a plain record with its getter and setter, one row for a field:
///
///     ORVANE_STRING_PROPERTY(Name, name)            getName(), setName(text), name_
///     ORVANE_TEXT_PROPERTY(Name, name, "a")         the same, "a" at the start
///     ORVANE_VALUE_PROPERTY(int, Type, type, 1)     getType(), setType(value), type_, 1 at the start
///
/// The row leaves the class in its private section.

#define ORVANE_TEXT_PROPERTY(Name, name, initial)                   \
 public:                                                            \
  const std::string& get##Name() const { return name##_; }          \
  void set##Name(std::string value) { name##_ = std::move(value); } \
                                                                    \
 private:                                                           \
  std::string name##_ = initial;

#define ORVANE_STRING_PROPERTY(Name, name) ORVANE_TEXT_PROPERTY(Name, name, {})

#define ORVANE_VALUE_PROPERTY(type, Name, name, initial) \
 public:                                                 \
  type get##Name() const { return name##_; }             \
  void set##Name(type value) { name##_ = value; }        \
                                                         \
 private:                                                \
  type name##_ = initial;
