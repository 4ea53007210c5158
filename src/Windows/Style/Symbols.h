#pragma once

#include <QIcon>
#include <QSize>
#include <QString>

namespace orvane {

/// A symbol of the program's own set (data/icons/symbols), in the text colour of the scheme in force whenever it is
/// drawn, sharp at every size and scale. An unknown name draws nothing. Main thread only.
QIcon symbolIcon(const QString& name);
/// The same in the accent's text colour, for main buttons.
QIcon accentSymbolIcon(const QString& name);

/// A picture of the status area (data/icons/status), in the sizes that panels take.
QIcon statusIcon(const QString& name);

/// A picture of the resources (":/catalogue/folder.svg") in its own colours, as large as fits into `size`.
QPixmap picture(const QString& resource, const QSize& size, qreal devicePixelRatio);

}  // namespace orvane
