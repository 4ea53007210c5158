#pragma once

#include <string>

/// The bytes that a text in base64 stands for, in the standard or the URL-safe alphabet ("-" and "_"). Any thread.
///
/// Never fails: bytes outside the alphabet are passed over, the padding among them, and bits at the end that make no
/// whole byte are dropped.
std::string DecodeBase64(const std::string& text);
