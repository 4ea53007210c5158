#include "Model/OvResources.h"

#include "Model/RecordCoding.h"

OvResources::OvResources(const orvane::KeyedObject& object) { orvane::decodeFields(object, *this); }

void OvResources::encodeWithCoder(orvane::KeyedArchiver& archiver) const { orvane::encodeFields(archiver, *this); }
