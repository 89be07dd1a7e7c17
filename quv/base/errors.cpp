#include "quv/base/errors.h"

#include "quv/base/component.h"

namespace quv {

std::string ComponentMessage(std::string_view name, std::string_view closing) {
  std::string text = "Component \"";
  text.append(name).append(closing);
  return text;
}

std::string ComponentMessage(const TComponent& component, std::string_view closing) {
  return ComponentMessage(component.Name(), closing);
}

std::string FunctionMessage(std::string_view function, std::string_view text) {
  std::string message(function);
  message.append(": ").append(text);
  return message;
}

std::string ArgumentMessage(std::string_view opening, std::string_view argument) {
  std::string message(opening);
  message.append(argument).append("\"");
  return message;
}

}  // namespace quv
