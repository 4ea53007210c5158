#pragma once

#include <QDialog>

namespace orvane {

/// A free window around a surface. It doesn't close by itself: who closes it clicks the surface's own button for that.
class AuxiliaryDialog : public QDialog {
 public:
  AuxiliaryDialog() : AuxiliaryDialog(nullptr) {}
  explicit AuxiliaryDialog(QWidget* parent);

  /// The content becomes the dialog's until releaseContent().
  void setContent(QWidget* content);
  void releaseContent();
  /// In the middle of that window, or of the screen.
  void placeOn(const QWidget* window);

 protected:
  void reject() override;
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QWidget* content_ = nullptr;
};

}  // namespace orvane
