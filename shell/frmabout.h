#pragma once

// The About box: name, version, picture and rights notice, closed by its one
// button. It is modal and short-lived: ShowAbout() builds one, runs it and
// destroys it, so a closed dialog is gone and the next About builds a new one
// (whose opening sets the version text again).

#include <QDialog>
#include <QPixmap>
#include <QWidget>

class QLabel;
class QPushButton;

namespace varnock {

// A plain drawing area whose backdrop picture is drawn at its top-left
// corner. Without a picture it draws nothing and the parent shows through.
class BackdropCanvas : public QWidget {
  public:
    explicit BackdropCanvas(QWidget *parent = nullptr);

    void SetBackdrop(const QPixmap &picture);
    const QPixmap &Backdrop() const { return backdrop_; }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    QPixmap backdrop_;
};

class frmAbout : public QDialog {
  public:
    explicit frmAbout(QWidget *parent = nullptr);

    // Shows the dialog and returns once it has been closed.
    int ShowModal();

    // Runs on every opening: puts the version into Label2.
    void Event_Open();
    void PushButton1_Action();

    // The controls, in order of creation, which is also the tab order.
    QLabel *Label1 = nullptr;
    QLabel *Label2 = nullptr;
    QPushButton *PushButton1 = nullptr;
    BackdropCanvas *Canvas1 = nullptr;
    QLabel *Label3 = nullptr;

  protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

// Builds an About box over `parent`, runs it modally and destroys it. While
// one is open a second call only brings that one to the front.
void ShowAbout(QWidget *parent);

// The About box that ShowAbout() has open right now, or nullptr.
frmAbout *OpenAbout();

// The About picture, "VarnockFrets128b.bmp", 128 x 128. Loaded at the first
// call and kept for the life of the program; every call returns the same
// object. Null when the file is missing. Needs the QApplication to exist.
const QPixmap &VarnockFrets128b();

} // namespace varnock
