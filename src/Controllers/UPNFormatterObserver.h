#pragma once

/// Is told by a UPNFormatter when a domain field becomes needless or needed again.
class UPNFormatterObserver {
 public:
  virtual ~UPNFormatterObserver() = default;
  virtual void handleUpnUsingChanged(bool useUPN) = 0;
};
