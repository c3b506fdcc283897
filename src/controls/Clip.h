#pragma once

#include "controls/clips/ClipFile.h"

#include <QTimer>
#include <QWidget>

namespace zv {

/// Plays a silent clip over and over. While none is open it shows nothing but its ground.
class ClipPlayer : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool autoPlay READ autoPlay WRITE setAutoPlay)
    Q_PROPERTY(bool playing READ isPlaying)
    Q_PROPERTY(int frame READ frame)

public:
    explicit ClipPlayer(QWidget* parent = nullptr);

    /// Opens a clip; `path` is in the program's own text. It plays at once when autoPlay() is on. False
    /// when the file is missing or is no clip that can be read; then no clip is open.
    bool open(const std::string& path);
    /// Forgets the clip.
    void close();

    bool autoPlay() const { return m_autoPlay; }
    void setAutoPlay(bool autoPlay) { m_autoPlay = autoPlay; }
    /// Goes on from the frame that is shown; nothing when no clip is open.
    void play();
    void stop();
    bool isPlaying() const { return m_timer.isActive(); }
    /// The frame that is shown, from 0.
    int frame() const { return m_frame; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void step();

    Clip m_clip;
    int m_frame = 0;
    bool m_autoPlay = false;
    QTimer m_timer;
};

} // namespace zv
