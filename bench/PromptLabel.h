#pragma once

#include <QLabel>

namespace zv::bench {

/// A label of one line whose middle gives way where it has too little room: the question stands at the end of
/// a prompt, its command at the start.
class PromptLabel final : public QLabel {
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace zv::bench
