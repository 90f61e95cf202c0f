#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmPicture;
}

/// A small window with a picture for all who helped. It is destroyed when it closes.
class frmPicture : public QDialog
{
    Q_DISABLE_COPY_MOVE(frmPicture)

public:
    explicit frmPicture(QWidget *parent);
    ~frmPicture() override;

private:
    std::unique_ptr<Ui::frmPicture> m_ui;
};
