#include "output/limited.h"

namespace command {
namespace {

class limitedreporter : public reporter {
 public:
  limitedreporter(std::unique_ptr<reporter> shown, std::size_t most)
      : shown_(std::move(shown)), most_(most) {}

  void take(const finding& found) override {
    if (found.level == severity::error && ++errors_ > most_) return;
    shown_->take(found);
  }

  listener* hears() override { return shown_->hears(); }

  void summary(const tally& total) override {
    tally limited = total;
    limited.omitted = errors_ > most_ ? errors_ - most_ : 0;
    shown_->summary(limited);
  }

 private:
  std::unique_ptr<reporter> shown_;
  std::size_t most_, errors_ = 0;
};

}  // namespace

std::unique_ptr<reporter> makelimited(std::unique_ptr<reporter> shown, std::size_t most) {
  return std::make_unique<limitedreporter>(std::move(shown), most);
}

}  // namespace command
