#pragma once

#include <QWidget>
#include <array>
#include <memory>
#include <vector>

#include "Controllers/ConnectionSettingsViewController.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

namespace orvane {

class ConnectionInfoView;

/// The editor of one connection. The controller outlives it.
class ConnectionSettingsView : public QWidget {
 public:
  explicit ConnectionSettingsView(ConnectionSettingsViewController& controller);

 private:
  // ConnectionSettingsSections.cpp: what the editor is made of.
  QWidget* makeHeader();
  QWidget* makeSections();
  QWidget* makeFooter();
  void addGeneral(QVBoxLayout& sections);
  void addLogIn(QVBoxLayout& sections);
  void addLocations(QVBoxLayout& sections);
  void addDisplay(QVBoxLayout& sections);
  void addDevices(QVBoxLayout& sections);
  void addAdvanced(QVBoxLayout& sections);
  QCheckBox* makeBox(ConnectionSetting setting, const char* objectName, const QString& title);
  QWidget* makePopUp(ConnectionPopUp popUp, const char* objectName, const QString& title);
  void connectFields();

  void refresh();
  void forgetTypedSecret();
  void refreshLogIn();
  void refreshPopUps();
  void refreshDescription();
  void refreshLocations();

  ConnectionSettingsViewController& controller_;
  std::array<QCheckBox*, kConnectionSettings> boxes_{};
  std::array<QComboBox*, kConnectionPopUps> popUps_{};
  std::vector<std::string> shownLocations_{};
  std::weak_ptr<OvFarm> shownOriginal_{};

  QPushButton* const back_;
  QLabel* const heading_;  // in place of title_ where that can't be edited
  QLineEdit* const title_;
  QPushButton* const undo_;
  QPushButton* const info_;
  ConnectionInfoView* const infoText_;
  QLabel* const description_;
  QPlainTextEdit* const descriptionField_;
  QPushButton* const addDescription_;
  QPushButton* const editDescription_;
  QLineEdit* const userName_;
  QLineEdit* const password_;
  QLineEdit* const domain_;
  QLabel* const preview_;
  QPushButton* const clearCredentials_;
  QWidget* locationsCard_ = nullptr;
  QListWidget* const locations_;
  QPushButton* const addLocation_;
  QPushButton* const removeLocation_;
  QPushButton* const editLocation_;
  QPushButton* const advanced_;
  QWidget* const advancedSection_;
  QLabel* const flashNotice_;
  QPushButton* const delete_;
  QPushButton* const cancel_;
  QPushButton* const add_;
};

}  // namespace orvane
