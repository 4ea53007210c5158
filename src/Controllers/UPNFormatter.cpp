#include "Controllers/UPNFormatter.h"

namespace {

bool containsBehindSomething(const std::string& text, char separator) {
  const size_t position = text.find(separator);
  return position != std::string::npos && position > 0;
}

}  // namespace

void UPNFormatter::setObjectValue(const std::string& text) {
  const bool useUPN = containsBehindSomething(text, '@') || containsBehindSomething(text, '\\');
  if (useUPN == _useUPN) return;
  _useUPN = useUPN;
  _observer.handleUpnUsingChanged(useUPN);
}
