// A message door for tests: records what was said and gives the answers laid out for it. A message
// that the test did not take back with Take() or an unforeseen question fails the test.
#pragma once

#include <gtest/gtest.h>

#include <QList>
#include <functional>
#include <ostream>
#include <utility>

#include "platform/message_door.h"

struct Message {
  QString kind;  // "error", "yes/no", "warning yes/no" or "yes/no/cancel"
  QString title;
  QString text;
  bool operator==(const Message&) const = default;
};

inline void PrintTo(const Message& message, std::ostream* out) {
  *out << message.kind.toStdString() << " [" << message.title.toStdString() << "] "
       << message.text.toStdString();
}

class RecordingMessageDoor final : public MessageDoor {
 public:
  RecordingMessageDoor() = default;
  RecordingMessageDoor(const RecordingMessageDoor&) = delete;
  RecordingMessageDoor& operator=(const RecordingMessageDoor&) = delete;
  ~RecordingMessageDoor() override {
    for (const Message& message : said_) {
      ADD_FAILURE() << "unexpected message: " << testing::PrintToString(message);
    }
    EXPECT_TRUE(answers_.isEmpty()) << "a question that the test expected was not asked";
  }

  // Lays out the answer to the next question.
  void Answers(Answer answer) { answers_.append(answer); }

  // Called with each message while it is open.
  void OnMessage(std::function<void(const Message&)> call) { onMessage_ = std::move(call); }

  // What was said since the last call.
  QList<Message> Take() { return std::exchange(said_, {}); }

  void ShowError(QWidget*, const QString& text, const QString& title) override {
    Say({"error", title, text});
  }
  Answer AskYesNo(QWidget*, const QString& text, const QString& title) override {
    Say({"yes/no", title, text});
    return Next();
  }
  Answer WarnYesNo(QWidget*, const QString& text, const QString& title) override {
    Say({"warning yes/no", title, text});
    return Next();
  }
  Answer AskYesNoCancel(QWidget*, const QString& text, const QString& title) override {
    Say({"yes/no/cancel", title, text});
    return Next();
  }

 private:
  void Say(const Message& message) {
    said_.append(message);
    if (onMessage_) onMessage_(message);
  }
  Answer Next() {
    if (answers_.isEmpty()) {
      ADD_FAILURE() << "a question without an answer laid out: " << said_.last().text.toStdString();
      return Answer::No;
    }
    return answers_.takeFirst();
  }

  QList<Message> said_;
  QList<Answer> answers_;
  std::function<void(const Message&)> onMessage_;
};
