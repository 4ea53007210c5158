#include "Model/AppItem.h"

#include "Model/FoldCase.h"

void AppItem::setDisplayName(std::string displayName) {
  _foldedDisplayName = orvane::foldCase(displayName);
  _displayName = std::move(displayName);
}

std::shared_ptr<AppItem> AppItem::copyItem() const { return std::shared_ptr<AppItem>(new AppItem(*this)); }
