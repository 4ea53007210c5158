#pragma once

#include <string>

#include "Support/SecureMemory.h"

/// A text that is overwritten in memory when it goes: when the object ends, and when another text takes its place.
class SecretText {
 public:
  SecretText() = default;
  SecretText(std::string text) : text_(std::move(text)) { orvane::wipe(text); }  // a short text stays where it was
  SecretText(const char* text) : text_(text) {}
  SecretText(const SecretText& other) : text_(other.text_) {}
  ~SecretText() { orvane::wipe(text_); }
  SecretText& operator=(const SecretText& other) {
    // Into a buffer of its own: assignment may free the old one without a wipe.
    std::string text = other.text_;
    orvane::wipe(text_);
    text_.swap(text);
    orvane::wipe(text);  // which has still what was swapped if that is short
    return *this;
  }

  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  bool operator==(const SecretText&) const = default;

 private:
  std::string text_{};
};
