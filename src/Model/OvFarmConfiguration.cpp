#include "Model/OvFarmConfiguration.h"

#include "Model/RecordCoding.h"
#include "OrvaneCommon/LocalizedText.h"

OvFarmConfiguration::OvFarmConfiguration(const orvane::KeyedObject& object) { orvane::decodeFields(object, *this); }

void OvFarmConfiguration::encodeWithCoder(orvane::KeyedArchiver& archiver) const {
  orvane::encodeFields(archiver, *this);
}

std::string OvFarmConfiguration::defaultName() { return orvane::localizedText("Farm.FarmDefaultName"); }
