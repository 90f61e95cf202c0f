#pragma once

#include <QLineEdit>

class EyeButton;

/// A text box that shows dots for its text, and an eye in it that shows the text until it is
/// pressed again or the box is left for another tab.
class PasswordBox : public QLineEdit
{
public:
    explicit PasswordBox(QWidget *parent);

protected:
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    EyeButton *m_eye;
};
