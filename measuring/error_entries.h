// How well marks are set and numbers known, as a user enters it. Kept between sessions.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringView>
#include <array>

namespace Measuring {

enum class ErrorOf : std::size_t { CircleEdge, SocketEdge, OtherPoint, Magnification, BodyWeight };

struct ErrorRow {
  ErrorOf id = ErrorOf::CircleEdge;
  QStringView key;  // in the settings and of the control
  QStringView caption;
  QStringView unit;  // empty for the factor
};

// Standard uncertainties. That of a mark counts in each direction.
inline constexpr std::array kErrors = {
    ErrorRow{ErrorOf::CircleEdge, u"edgeOfCircle", u"Point on a circle's edge", u"pixels"},
    ErrorRow{ErrorOf::SocketEdge, u"socketEdge", u"Edge of the socket", u"pixels"},
    ErrorRow{ErrorOf::OtherPoint, u"otherPoint", u"Other points", u"pixels"},
    ErrorRow{ErrorOf::Magnification, u"magnification", u"Magnification", u""},
    ErrorRow{ErrorOf::BodyWeight, u"bodyWeight", u"Body weight", u"kg"}};
inline constexpr std::size_t kErrorCount = kErrors.size();

constexpr std::size_t IndexOf(ErrorOf id) {
  return static_cast<std::size_t>(id);
}

// As typed; empty counts as no error.
using ErrorTexts = std::array<QString, kErrorCount>;

struct CheckedErrors {
  std::array<double, kErrorCount> u = {};
  std::array<bool, kErrorCount> isWrong = {};  // not a number, or negative
  bool isAnyGiven = false;

  bool IsGood() const;
  double operator[](ErrorOf id) const { return u[IndexOf(id)]; }
};
CheckedErrors CheckErrors(const ErrorTexts& texts);

// As a section of the settings.
inline constexpr QLatin1String kErrorSection("measuring");
QJsonObject ToJson(const ErrorTexts& texts);
ErrorTexts ErrorTextsFrom(const QJsonObject& json);

}  // namespace Measuring
