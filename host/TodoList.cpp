#include "TodoList.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLabel>
#include <QSqlError>
#include <QSqlQuery>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tarvin::host {

namespace {

// The grant is the same chain of posts and functions the workflow uses to
// route work-order messages: post and function in force, the function
// naming the code. %1 is the code's expression.
const char* const kGrantSql =
    "EXISTS (SELECT 1 FROM z_czyygw a1, z_gw b1, z_gwyzn c1, z_ywzn d1, z_znyywx e1"
    " WHERE a1.czydm = ? AND a1.zdm = c1.gwdm AND c1.gwdm = b1.dm AND b1.sfyx = 1"
    " AND c1.zndm = e1.zndm AND e1.zndm = d1.dm AND d1.sfyx = 1 AND e1.cldm = %1)";

const QString kTodoSql =
    QStringLiteral("SELECT a.cdbh, a.ywdm, a.dqywx, a.dqywxmc, a.khbh, a.hm, a.jssj, e.export_name"
                   " FROM z_dqgw a LEFT JOIN tarvin_ywx_export e ON e.ywxdm = a.dqywx"
                   " WHERE a.glbm = ? AND ") +
    QString::fromLatin1(kGrantSql).arg(QStringLiteral("a.dqywx")) + QStringLiteral(" ORDER BY a.jssj, a.cdbh");

QString timeText(const QVariant& v) {
    if (v.isNull()) return QString();
    if (v.typeId() == QMetaType::QDateTime) return v.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return v.toString().replace(QLatin1Char('T'), QLatin1Char(' ')).left(19);
}

}  // namespace

bool operatorHoldsGrant(const QSqlDatabase& db, const QString& czydm, const QString& code) {
    QSqlQuery q(db);
    if (!q.prepare(QStringLiteral("SELECT 1 FROM dual WHERE ") + QString::fromLatin1(kGrantSql).arg(QStringLiteral("?"))))
        return false;
    q.addBindValue(czydm);
    q.addBindValue(code);
    return q.exec() && q.next();
}

QList<TodoCase> TodoList::read(const QSqlDatabase& db, const QString& czydm, const QString& dw) {
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.prepare(kTodoSql)) throw std::runtime_error(q.lastError().text().toStdString());
    q.addBindValue(dw);
    q.addBindValue(czydm);
    if (!q.exec()) throw std::runtime_error(q.lastError().text().toStdString());
    QList<TodoCase> out;
    while (q.next()) {
        TodoCase c;
        c.cdbh = q.value(0).toString();
        c.ywxdm = q.value(2).toString();
        c.ywdm = q.value(1).toString();
        if (c.ywdm.isEmpty()) c.ywdm = c.ywxdm.left(3);  // the business is the item's first three digits
        c.ywxmc = q.value(3).toString();
        c.khbh = q.value(4).toString();
        c.hm = q.value(5).toString();
        c.arrived = timeText(q.value(6));
        c.exportName = q.value(7).toString();
        out << c;
    }
    return out;
}

TodoList::TodoList(QSqlDatabase db, QString czydm, QString dw, std::function<bool(const QByteArray&)> hasEntry,
                   QWidget* parent)
    : QWidget(parent), db_(db), czydm_(std::move(czydm)), dw_(std::move(dw)), hasEntry_(std::move(hasEntry)) {
    setObjectName(QStringLiteral("TodoList"));
    heading_ = new QLabel(this);
    heading_->setObjectName(QStringLiteral("Lbl_Dbsx"));
    heading_->setStyleSheet(QStringLiteral("font-weight: bold"));
    view_ = new QTreeWidget(this);
    view_->setObjectName(QStringLiteral("Lv_Dbsx"));
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAlternatingRowColors(true);
    view_->setHeaderLabels({QStringLiteral("传单编号"), QStringLiteral("户号"), QStringLiteral("户名"),
                            QStringLiteral("当前业务项"), QStringLiteral("到达时间")});
    view_->header()->resizeSection(0, 100);
    view_->header()->resizeSection(1, 100);
    view_->header()->resizeSection(2, 150);
    view_->header()->resizeSection(3, 150);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading_);
    layout->addWidget(view_);
    connect(view_, &QTreeWidget::itemActivated, this, &TodoList::activate);
    refresh();
}

void TodoList::refresh() {
    view_->clear();
    try {
        cases_ = read(db_, czydm_, dw_);
    } catch (const std::exception& e) {
        cases_.clear();
        heading_->setText(QStringLiteral("待办事项（读取失败：%1。请检查数据库连接后重新打开）")
                              .arg(QString::fromUtf8(e.what())));
        return;
    }
    heading_->setText(cases_.isEmpty() ? QStringLiteral("待办事项（无）")
                                       : QStringLiteral("待办事项（%1）").arg(cases_.size()));
    for (int i = 0; i < cases_.size(); ++i) {
        const TodoCase& c = cases_[i];
        auto* item = new QTreeWidgetItem(view_, {c.cdbh, c.khbh, c.hm, c.ywxdm + QLatin1Char(' ') + c.ywxmc, c.arrived});
        item->setData(0, Qt::UserRole, i);
        if (c.exportName.isEmpty() || !hasEntry_(c.exportName.toLatin1())) {
            // Worked elsewhere in the marketing system, or by a screen this
            // module does not offer yet: listed so the case is not forgotten.
            item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
            const QString why = c.exportName.isEmpty()
                                    ? QStringLiteral("此业务项（%1）由营销系统的其他模块处理").arg(c.ywxdm)
                                    : QStringLiteral("此业务项的界面在当前模块中尚未提供（模块没有导出 %1）").arg(c.exportName);
            for (int col = 0; col < view_->columnCount(); ++col) item->setToolTip(col, why);
        } else {
            for (int col = 0; col < view_->columnCount(); ++col)
                item->setToolTip(col, QStringLiteral("双击打开：%1").arg(c.ywxmc));
        }
    }
}

void TodoList::activate(QTreeWidgetItem* item) {
    if (!item || !(item->flags() & Qt::ItemIsEnabled)) return;
    const int i = item->data(0, Qt::UserRole).toInt();
    if (i >= 0 && i < cases_.size()) emit openRequested(cases_[i]);
}

}  // namespace tarvin::host
