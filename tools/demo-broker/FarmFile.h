#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "ElementReader.h"
#include "FarmDescription.h"

namespace orvane::demo {

/// The content of a file that a farm file names, or nothing if it can't be read.
using FileReader = std::function<std::optional<std::string>(const std::string& name)>;

/// Reads the XML of a farm; docs/demo-broker.md tells its form. `fileName` is for messages. Throws FarmFileError.
FarmDescription parseFarm(const std::string& xml, const std::string& fileName, const FileReader& readNamedFile);

/// The same from a file; what it names is looked for beside it. Throws FarmFileError.
FarmDescription loadFarmFile(const std::filesystem::path& file);

/// The farm that is built into the program.
FarmDescription sampleFarm();

}  // namespace orvane::demo
