#include "Platform/Linux/Desktop/KeyboardModifiers.h"

#include <QGuiApplication>

namespace orvane {

uint32_t KeyboardModifiers::held() const {
  const Qt::KeyboardModifiers keys = QGuiApplication::queryKeyboardModifiers();
  return (keys.testFlag(Qt::ShiftModifier) ? kShift : 0) | (keys.testFlag(Qt::ControlModifier) ? kControl : 0);
}

}  // namespace orvane
