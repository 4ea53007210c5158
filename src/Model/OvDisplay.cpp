#include "Model/OvDisplay.h"

#include "Model/RecordCoding.h"

OvDisplay::OvDisplay(const orvane::KeyedObject& object) {
  orvane::decodeFields(object, *this);
  if (customWidth_ == 0) customWidth_ = width_;
  if (customHeight_ == 0) customHeight_ = height_;
}

void OvDisplay::encodeWithCoder(orvane::KeyedArchiver& archiver) const { orvane::encodeFields(archiver, *this); }
