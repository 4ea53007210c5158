#include "Controllers/ManualConnectionInfoLocationItemViewController.h"

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/PresentationTexts.h"
#include "OrvaneCommon/TextFormat.h"

using orvane::yesOrNo;

ManualConnectionInfoLocationItemViewController::ManualConnectionInfoLocationItemViewController(
    const OvLocation& location, bool isDefault)
    : _title(isDefault ? orvane::formatText("%@ [%@]", {location.name(), orvane::localizedText("Location.DefaultName")})
                       : location.name()),
      _protocol(orvane::protocolName(location.protocol())),
      _port(std::to_string(location.port())),
      _servers(orvane::onePerLine(location.brokers())),
      _natSupport(yesOrNo(location.doUseNatSupport())),
      _rdpOverSsl(yesOrNo(location.doUseSsl())),
      _proxy(location.proxyServer().empty() ? yesOrNo(false) : location.proxyServer()) {}
