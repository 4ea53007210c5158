#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace orvane {

/// The format of a keyed text with its placeholders "%@" filled in from left to right, and "%%" as one percent sign.
/// What an argument contains is text and no placeholder. A placeholder without an argument becomes nothing, an argument
/// without a placeholder is left out. Any thread.
std::string formatText(std::string_view format, std::initializer_list<std::string_view> arguments);

}  // namespace orvane
