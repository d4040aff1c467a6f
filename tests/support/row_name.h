// Names a row of a table of cases by its member `name`.
#pragma once

#include <gtest/gtest.h>

#include <string>

struct RowName {
  template <class Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};
