#include "desktop/reviewer.h"

namespace desktop {
namespace {

constexpr int delayMs = 120;

using ReviewPointer = std::shared_ptr<const Review>;

/// A fault of the machine or of ours, such as a full memory, is a finding.
ReviewPointer failedReview(const std::exception& fault) {
  Review failed;
  failed.findings.push_back({Weight::error, fault.what(), fault.what(), 0, -1});
  return std::make_shared<const Review>(std::move(failed));
}

ReviewPointer safeReviewOf(const ReviewRequest& request) {
  try {
    return std::make_shared<const Review>(reviewOf(request));
  } catch (const std::exception& fault) {
    return failedReview(fault);
  }
}

}  // namespace

Reviewer::Reviewer(std::function<ReviewRequest()> request, QObject* parent)
    : QObject(parent), request_(std::move(request)) {
  pool_.setMaxThreadCount(1);
  delay_.setSingleShot(true);
  connect(&delay_, &QTimer::timeout, this, &Reviewer::begin);
}

Reviewer::~Reviewer() { pool_.waitForDone(); }

/// At once when there was no change for a while. Changes in a row have one review after the last,
/// and the first one lets the window show itself.
void Reviewer::renew() {
  const bool rested = sinceChange_.isValid() && sinceChange_.elapsed() >= delayMs;
  sinceChange_.start();
  delay_.start(rested ? 0 : delayMs);
}

/// One at a time: changes that come meanwhile have the next one.
void Reviewer::begin() {
  outdated_ = running_;
  if (running_) return;
  running_ = true;
  ReviewRequest request;
  try {
    request = request_();
  } catch (const std::exception& fault) {  // no time of day
    return finish(failedReview(fault));
  }
  pool_.start([this, request = std::move(request)] {
    const ReviewPointer review = safeReviewOf(request);
    QMetaObject::invokeMethod(
        this, [this, review] { finish(review); }, Qt::QueuedConnection);
  });
}

void Reviewer::finish(const std::shared_ptr<const Review>& review) {
  running_ = false;
  if (outdated_) return begin();
  if (delay_.isActive()) return;  // the next one is on its way
  Q_EMIT ready(review);
}

}  // namespace desktop
