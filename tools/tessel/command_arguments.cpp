#include "command_arguments.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace tessel::cli {

namespace {

bool Contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

bool CommandArguments::Parse(const std::vector<std::string>& arguments, const ArgumentSpec& spec, Failure& failure) {
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& arg = arguments[i];
    bool repeated = Contains(spec.repeatedOptions, arg);
    if (repeated || Contains(spec.valueOptions, arg)) {
      if (i + 1 >= arguments.size()) {
        failure = UsageFailure(arg + " expects a value");
        return false;
      }
      if (repeated) {
        _repeated.emplace(arg, arguments[++i]);
      } else {
        _given[arg] = arguments[++i];
      }
    } else if (Contains(spec.flags, arg)) {
      _given[arg] = "";
    } else if (arg.size() > 1 && arg[0] == '-') {
      failure = UsageFailure("unknown option " + arg);
      return false;
    } else {
      _positionals.push_back(arg);
    }
  }
  if (_positionals.size() != spec.positionals) {
    failure = UsageFailure(std::string("expected ") + spec.positionalNames);
    return false;
  }
  return true;
}

std::string CommandArguments::Text(const std::string& name, const std::string& fallback) const {
  auto found = _given.find(name);
  return found == _given.end() ? fallback : found->second;
}

std::vector<std::string> CommandArguments::Values(const std::string& name) const {
  std::vector<std::string> values;
  auto [first, last] = _repeated.equal_range(name);
  for (auto value = first; value != last; ++value) values.push_back(value->second);
  return values;
}

bool CommandArguments::Seconds(const std::string& name, double fallback, double& value, Failure& failure) const {
  value = fallback;
  if (!Has(name)) return true;
  const std::string& text = _given.at(name);
  char* end = nullptr;
  errno = 0;
  value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0' || errno != 0 || !std::isfinite(value) || value < 0) {
    failure = UsageFailure(name + " expects seconds (a number, 0 or more), got \"" + text + "\"");
    return false;
  }
  return true;
}

bool CommandArguments::Count(const std::string& name, int64_t fallback, int64_t minimum, int64_t maximum,
                             int64_t& value, Failure& failure) const {
  value = fallback;
  if (!Has(name)) return true;
  const std::string& text = _given.at(name);
  char* end = nullptr;
  errno = 0;
  long long parsed = std::strtoll(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || errno != 0 || parsed < minimum || parsed > maximum) {
    failure = UsageFailure(name + " expects a whole number from " + std::to_string(minimum) + " to " +
                           std::to_string(maximum) + ", got \"" + text + "\"");
    return false;
  }
  value = parsed;
  return true;
}

}  // namespace tessel::cli
