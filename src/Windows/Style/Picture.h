#pragma once

#include <QString>
#include <QWidget>

namespace orvane {

/// A picture of the resources, drawn to fit. It says nothing that a text beside it doesn't, so assistive technology
/// passes over it.
class Picture : public QWidget {
 public:
  Picture(QString resource, QSize size);
  void setResource(const QString& resource);
  QSize sizeHint() const override { return size_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString resource_;
  const QSize size_;
};

}  // namespace orvane
