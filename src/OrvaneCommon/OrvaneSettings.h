#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace pugi {
class xml_node;
}

/// The user's preferences for the application as a whole, and their file: XML in UTF-8 with one element for each under
/// the root "OrvaneSettings". Passwords are not among them.
///
/// Setters change only memory; nothing reaches the file until save(). All operations may be called on any thread: the
/// main one writes while the queues of farms read. Nothing here throws or reports a failure.
class OrvaneSettings {
 public:
  /// The program's preferences, loaded on first use and never freed.
  static OrvaneSettings& instance();

  /// The preferences of the file at `path`, loaded. The defaults where it is absent or tells nothing.
  explicit OrvaneSettings(std::string path);
  OrvaneSettings(const OrvaneSettings&) = delete;
  OrvaneSettings& operator=(const OrvaneSettings&) = delete;

#define ORVANE_PREFERENCE(type, name, Setter, initial) \
  type name() const {                                  \
    const std::scoped_lock lock(mutex_);               \
    return m_##name;                                   \
  }                                                    \
  void set##Setter(type value) {                       \
    const std::scoped_lock lock(mutex_);               \
    m_##name = std::move(value);                       \
  }
#include "OrvaneCommon/OrvaneSettingsFields.def"
#undef ORVANE_PREFERENCE

  /// Takes over what the file says, in the way of loadFromString; a file that can't be read or understood changes
  /// nothing.
  void load();

  /// Takes over what the elements of `text` say. @return false, with nothing changed, if `text` isn't UTF-8 or has no
  /// element at all.
  ///
  /// Damaged markup counts as far as it can be read: bare ampersands are text, what follows the root is passed over,
  /// and from the first tag on that is never closed, or closed by another, nothing more is read. The root's name is not
  /// looked at; of each element the first counts.
  ///
  /// An absent element leaves its value as it is, but for the printer driver's name, which is then empty. A boolean is
  /// true if its text starts, behind blanks, with one of "YyTt" or a digit from 1 to 9; an integer that can't be read,
  /// or is out of range, is 0. A file below version 1.0 turns `enableAdaptiveGraphics` and `showTutorialOnStart` on.
  bool loadFromString(const std::string& text);

  /// Writes the file as one step, mode 0600. A failure is logged and leaves the file as it was. A file that the last
  /// load() couldn't read or understand is kept beside the new one, as "<name>.unreadable.XXXXXX".
  void save();

  /// The text of the file; a text that isn't UTF-8 has an empty element.
  std::string saveToString() const;

  /// The version that a document's root tells: 0 if it can't be read, -1 if there is none.
  static float getSettingsFileVersion(const pugi::xml_node& root);

 private:
  bool setAsideUnreadableFile();

  const std::string path_;
  std::mutex fileMutex_;           // one load or save at a time; taken before mutex_
  bool fileIsUnreadable_ = false;  // guarded by fileMutex_
  mutable std::mutex mutex_;       // guards the preferences

#define ORVANE_PREFERENCE(type, name, Setter, initial) type m_##name = initial;
#include "OrvaneCommon/OrvaneSettingsFields.def"
#undef ORVANE_PREFERENCE
};
