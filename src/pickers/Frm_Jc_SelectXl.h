// Line picker: the feeders of the current unit as a tree through Y_XL,
// read one level at a time, returning the chosen line's number and name.
#pragma once

#include <QDialog>
#include <QPointer>
#include "ui_Frm_Jc_SelectXl.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

// A plain dialogue, not a base screen: it has none of the base screen's
// key handling. Enter in the tree must reach the default confirm button
// (Enter-as-Tab would only move the focus), and the picker has no help
// topic of its own.
class TJc_SelectXl_Frm : public QDialog, public Ui::Jc_SelectXl_Frm {
    Q_OBJECT
public:
    explicit TJc_SelectXl_Frm(QWidget* parent = nullptr);


    // Read by the caller after OK.
    QString SelXlbh;
    QString SelXlmc;

    // The line number a node carries: XLBH cut to its first 7 characters,
    // as the node's record has room for no more.
    static QString NodeXlbh(const QTreeWidgetItem* node);

public slots:
    void FormShow();
    // Reloads the node's children from the database, on every opening.
    void TvLst_HyLbExpanding(QTreeWidgetItem* node);
    // The node about to be selected gets its children loaded too.
    void TvLst_HyLbChanging(QTreeWidgetItem* node);
    void TvLst_HyLbChange(QTreeWidgetItem* node);
    void Bbtn_QrClick();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void currentNodeChanged(QTreeWidgetItem* node);
    // Reloading deletes nodes, which may move the current node; the
    // selection handlers wait until the tree is whole again.
    bool loading_ = false;
    bool currentMoved_ = false;
};

extern QPointer<TJc_SelectXl_Frm> Jc_SelectXl_Frm;
