#include "Http/HttpException.h"

#include <utility>

HttpException::HttpException(int errorCode, std::string errorText)
    : errorCode_(errorCode), errorText_(std::move(errorText)) {}

HttpException::HttpException(int errorCode)
    : HttpException(errorCode, "error " + std::to_string(errorCode) + " occurred") {}
