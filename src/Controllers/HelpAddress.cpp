#include "Controllers/HelpAddress.h"

#include "OrvaneCommon/LocalizedText.h"

std::string orvane::helpAddress() { return localizedText("Help.Address"); }
