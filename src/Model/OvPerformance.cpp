#include "Model/OvPerformance.h"

#include "Model/RecordCoding.h"

OvPerformance::OvPerformance(const orvane::KeyedObject& object) { orvane::decodeFields(object, *this); }

void OvPerformance::encodeWithCoder(orvane::KeyedArchiver& archiver) const { orvane::encodeFields(archiver, *this); }
