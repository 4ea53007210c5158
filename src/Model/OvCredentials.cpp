#include "Model/OvCredentials.h"

#include "Model/RecordCoding.h"

OvCredentials::OvCredentials(const orvane::KeyedObject& object) { orvane::decodeFields(object, *this); }

void OvCredentials::encodeWithCoder(orvane::KeyedArchiver& archiver) const { orvane::encodeFields(archiver, *this); }

void OvCredentials::setEqualToCredentials(const OvCredentials* other) {
  if (other != nullptr) *this = *other;
}

void OvCredentials::clear() {
  username_.clear();
  password_ = {};
  domain_.clear();
  needToSave_ = false;
  credentialsAreValid_ = false;
}

void OvCredentials::invalidateCredentials() {
  credentialsAreValid_ = false;
  if (needToSave_) {
    password_ = {};
  } else {
    clear();
  }
}
