#include "Model/OvLocation.h"

#include "Model/RecordCoding.h"
#include "OrvaneCommon/LocalizedText.h"

OvLocation::OvLocation(const orvane::KeyedObject& object) { orvane::decodeFields(object, *this); }

void OvLocation::encodeWithCoder(orvane::KeyedArchiver& archiver) const { orvane::encodeFields(archiver, *this); }

void OvLocation::setEqualToLocation(const OvLocation* other) {
  if (other != nullptr) *this = *other;
}

std::string OvLocation::defaultName() { return orvane::localizedText("Location.DefaultName"); }
