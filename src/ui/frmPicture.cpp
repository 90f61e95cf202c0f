#include "ui/frmPicture.h"

#include "ui/pictures.h"
#include "ui_frmPicture.h"

frmPicture::frmPicture(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmPicture>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    // As large beside a large text as beside a small one.
    const int line = fontMetrics().height();
    m_ui->picture->setPixmap(
        pictures::scaled(pictures::team(), {24 * line, 18 * line}, devicePixelRatioF()));
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

frmPicture::~frmPicture() = default;
