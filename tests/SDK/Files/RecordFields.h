#pragma once

#include <map>
#include <string>

#include "Files/OvSettingsData.h"

/// A record as text, by the names of its fields, so that whole records are compared and a difference names its field.
using RecordFields = std::map<std::string, std::string>;

/// Strings as they are and "(unset)", numbers in decimal, switches as 0 or 1.
RecordFields fieldsOf(const OvSettingsData& record);

/// What a document without any line leaves.
RecordFields defaultsAfterLoad();

/// `fields` with some of them changed. Fails the test for a name that is no field's.
RecordFields with(RecordFields fields, const RecordFields& changes);

/// The same with the changes in little space: "name=value|name=value".
RecordFields with(const RecordFields& fields, const std::string& changes);

/// Many lines in little space: each is ended by "|" instead of a line feed.
std::string linesOf(std::string text);
