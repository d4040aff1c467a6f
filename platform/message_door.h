// The one door through which every message to the user passes. The rooms below report; only this
// door shows. Tests put their own door here, record what was said and answer it.
#pragma once

#include <QString>

class QWidget;

class MessageDoor {
 public:
  enum class Answer { Yes, No, Cancel };

  MessageDoor() = default;
  MessageDoor(const MessageDoor&) = delete;
  MessageDoor& operator=(const MessageDoor&) = delete;
  virtual ~MessageDoor() = default;

  // Modal, exclamation icon, OK. Returns when the user has closed it.
  virtual void ShowError(QWidget* parent, const QString& text, const QString& title) = 0;

  // Modal, question icon, Yes and No. Its buttons alone close it: Escape and the close box do
  // nothing.
  virtual Answer AskYesNo(QWidget* parent, const QString& text, const QString& title) = 0;

  // The same with the exclamation icon, before something that the user may regret; Enter means No.
  virtual Answer WarnYesNo(QWidget* parent, const QString& text, const QString& title) = 0;

  // Modal, question icon, Yes, No and Cancel. The close box and Escape mean Cancel.
  virtual Answer AskYesNoCancel(QWidget* parent, const QString& text, const QString& title) = 0;
};

// The door that people see: Qt's message boxes.
class DialogMessageDoor final : public MessageDoor {
 public:
  void ShowError(QWidget* parent, const QString& text, const QString& title) override;
  Answer AskYesNo(QWidget* parent, const QString& text, const QString& title) override;
  Answer WarnYesNo(QWidget* parent, const QString& text, const QString& title) override;
  Answer AskYesNoCancel(QWidget* parent, const QString& text, const QString& title) override;
};
