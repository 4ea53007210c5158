#pragma once

#include <string>

/// `text` without blanks, tabs, line feeds and carriage returns at both ends; a text of nothing else stays as it is.
/// Any thread.
std::string trim_whitespaces(const std::string& text);
