#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <functional>
#include <memory>

#include "desktop/review.h"

namespace desktop {

/// Makes reviews of a project that changes, beside the window, which never waits for one.
class Reviewer final : public QObject {
  Q_OBJECT
 public:
  /// `request` answers with the project as it is when a review begins.
  explicit Reviewer(std::function<ReviewRequest()> request, QObject* parent = nullptr);
  ~Reviewer() override;

  /// The project changed.
  void renew();

 Q_SIGNALS:
  void ready(const std::shared_ptr<const desktop::Review>& review);

 private:
  void begin();
  void finish(const std::shared_ptr<const Review>& review);

  std::function<ReviewRequest()> request_;
  QThreadPool pool_;
  QTimer delay_;
  QElapsedTimer sinceChange_;
  bool running_ = false;
  bool outdated_ = false;  // changed while the running review was made
};

}  // namespace desktop
