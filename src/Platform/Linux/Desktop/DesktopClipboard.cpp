#include "Platform/Linux/Desktop/DesktopClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace orvane {

std::optional<std::string> DesktopClipboard::bytes(const std::string& mimeType) const {
  const QMimeData* const content = QGuiApplication::clipboard()->mimeData();
  const QString type = QString::fromStdString(mimeType);
  if (content == nullptr || !content->hasFormat(type)) return {};
  return content->data(type).toStdString();
}

}  // namespace orvane
