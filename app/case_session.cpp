// The flags, step by step.
#include "app/case_session.h"

#include <utility>

#include "case/case_conversion.h"

void CaseSession::NoteSaved(const QString& path) {
  saveOK_ = true;
  origin_ = {path, record_.data};
}

void CaseSession::NoteRead(const QString& path, std::optional<CaseData> read) {
  openOK_ = true;
  originInForm_ = {path, std::move(read)};
  formIsRead_ = true;
}

void CaseSession::NoteNew() {
  originInForm_ = {};
  formIsRead_ = false;
}

void CaseSession::NoteChange() {
  originInForm_ = origin_;
  formIsRead_ = false;
}

void CaseSession::Recover(CaseData data, const QString& path) {
  originInForm_ = {path, std::nullopt};
  formIsRead_ = false;
  Confirm(std::move(data));
}

void CaseSession::Confirm(CaseData data) {
  record_.data = std::move(data);
  hasCase_ = true;
  origin_ = originInForm_;
  if (origin_.data && Vse::IsSameCase(*origin_.data, record_.data)) {
    isAsRead_ = isAsRead_ || formIsRead_;
    return;
  }
  saveOK_ = false;
  openOK_ = false;
  isAsRead_ = false;
}
