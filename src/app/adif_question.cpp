#include "app/adif_question.h"

#include "text/error.h"

namespace tobarine {

std::optional<AdifReading> ask_how_to_read(Shell& shell, const std::filesystem::path& file,
                                           const AdifLayout& layout) {
  const std::string harm = classic_harm(layout);
  if (harm.empty()) return AdifReading::kClassic;
  Choice choice{"ADIF の読み方", path_text(file.filename()) + "\n\n" + harm + "。", {}};
  for (const AdifReadingName& name : adif_readings()) choice.answers.emplace_back(name.label);
  const std::optional<std::size_t> answer = shell.ask(choice);
  if (!answer) return std::nullopt;
  return adif_readings()[*answer].reading;
}

}  // namespace tobarine
