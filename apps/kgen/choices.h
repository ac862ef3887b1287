#pragma once

#include <CLI/CLI.hpp>
#include <initializer_list>

namespace kgen {

/// Accepts the given values alone. The help shows them as the name of the value, once.
template <class Value>
CLI::Validator oneOf(std::initializer_list<Value> values) {
  return CLI::IsMember(values).description("");
}

}  // namespace kgen
