#include "unt_jc_fuc.h"

#include <QTreeWidget>
#include <cmath>

#include "data/Dm_Jc_Func.h"
#include "data/MidasQuery.h"

using namespace Qt::StringLiterals;

namespace {

TMidasQuery* scratch() {
    if (!Dataset_Jc_Func || !Dataset_Jc_Func->MQry_Select)
        throw EDatabaseError(u"Dataset_Jc_Func: the data module is not created"_s);
    return Dataset_Jc_Func->MQry_Select;
}

}  // namespace

QString GetNewJhbh() {
    TMidasQuery* q = scratch();
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(u"select * from E_JCJH"_s);
    q->Open();
    if (q->IsEmpty()) {
        q->Close();
        return u"0001"_s;
    }
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(u"select max(JHBH) as BH from E_JCJH"_s);
    q->Open();
    const qint64 next = q->FieldByName(u"BH"_s).AsInteger() + 1;
    q->Close();
    // At least four digits; a larger number is written in full.
    const QString digits = QString::number(next < 0 ? -next : next).rightJustified(4, u'0');
    return next < 0 ? u"-"_s + digits : digits;
}

void UndoYysq(const QString& cdbh) {
    TMidasQuery* q = scratch();
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(u"Begin Yk_UndoYysq(:ac_Cdbh); End;"_s);
    q->Params().Clear();
    q->Params().CreateParam(ftString, u"ac_CDBH"_s, ptInput);
    q->ParamByName(u"ac_Cdbh"_s).SetAsString(cdbh);
    q->ExecSQL();
    q->Close();
}

bool CheckIntStr(const QString& s) {
    if (s.isEmpty()) return true;
    return IsIntStr(s.trimmed());
}

bool CheckFloatStr(const QString& s) {
    if (s.isEmpty()) return true;
    bool ok = false;
    const double v = s.trimmed().toDouble(&ok);
    return ok && std::isfinite(v);
}

QString QuotedSqlText(const QString& text) {
    QString out = text;
    return out.replace(u'\'', u"''"_s);
}

QString GetDnbLxCode(const QString& dnblx) {
    if (dnblx == u"有功表"_s || dnblx == u"预付费表"_s) return u"D"_s;
    if (dnblx == u"需量表"_s) return u"X"_s;
    if (dnblx == u"无功表"_s) return u"EF"_s;
    if (dnblx == u"多功能表"_s) return u"ABCDEFX"_s;
    if (dnblx == u"复费率表"_s) return u"CD"_s;
    return {};
}

void MoveListItems(QTreeWidget* source, QTreeWidget* target, int n, bool all) {
    if (!source || !target) return;
    if (!all && source->selectedItems().isEmpty()) return;
    for (int i = source->topLevelItemCount() - 1; i >= 0; --i) {
        QTreeWidgetItem* from = source->topLevelItem(i);
        if (!all && !from->isSelected()) continue;
        auto* to = new QTreeWidgetItem(target);
        to->setText(0, from->text(0));
        for (int k = 1; k <= n; ++k) to->setText(k, from->text(k));
        if (!all) delete source->takeTopLevelItem(i);
    }
    if (all) source->clear();
}
