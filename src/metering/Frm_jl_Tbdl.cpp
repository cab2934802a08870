#include "Frm_jl_Tbdl.h"

#include "common/Unt_Jc_Message.h"
#include "common/Unt_Zt_UserFuncs.h"
#include "common/unt_jc_fuc.h"
#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"

#include <QHeaderView>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTableView>
#include <QTreeWidget>
#include <cmath>

using namespace Qt::StringLiterals;

QPointer<Tjl_Tbdl_Frm> jl_Tbdl_Frm;

namespace {

const QString kBu = u"补"_s;
const QString kTui = u"退"_s;
const QString kAll = u"全部"_s;

// A decision's period and billing points lead its reason, as the screen
// writes it ("202401-202403，计费点01、02：..."): b_tbjl has no other place
// for them, and they tie the decision to its detail rows.
struct TExtent {
    QString Qsny, Zzny;
    QStringList Jfdbh;
    bool Valid = false;
};

TExtent ParseExtent(const QString& tbyy) {
    static const QRegularExpression re(u"^(\\d{6})-(\\d{6})，计费点([^：]+)："_s);
    const QRegularExpressionMatch m = re.match(tbyy);
    if (!m.hasMatch()) return {};
    return {m.captured(1), m.captured(2), m.captured(3).split(u'、'), true};
}

bool Overlaps(const TExtent& a, const TExtent& b) {
    if (a.Qsny > b.Zzny || b.Qsny > a.Zzny) return false;
    for (const QString& p : a.Jfdbh)
        if (b.Jfdbh.contains(p)) return true;
    return false;
}

// Energy to whole kWh, half away from zero.
qint64 Kwh(double v) { return qint64(std::llround(v)); }

// kWh at a price in 1/10000 yuan, to the fen, half away from zero.
qint64 Fen(qint64 kwh, qint64 dj4) {
    const qint64 n = kwh * dj4;
    return n >= 0 ? (n + 50) / 100 : -((-n + 50) / 100);
}

QString Num(double v) {
    QString s = QString::number(v, 'f', 2);
    if (s.endsWith(u".00"_s)) s.chop(3);
    return s;
}

// Refuses an input: the message, then the focus on the control with its
// text selected for typing over; nothing typed is cleared.
bool Refuse(QWidget* control, const QString& message) {
    ShowInfoMsg(message);
    control->setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(control)) edit->selectAll();
    return false;
}

QString Yuan(qint64 fen) { return QString::number(double(fen) / 100.0, 'f', 2); }

// "1−25%" / "1+3%" for the formula column.
QString OnePlus(double p) { return (p < 0 ? u"1−"_s : u"1+"_s) + Num(std::abs(p)) + u'%'; }

}  // namespace

Tjl_Tbdl_Frm::Tjl_Tbdl_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"jl_Tbdl_Frm"_s);
    Mqry_Tbjl = new TMidasQuery(this, u"Mqry_Tbjl"_s);
    Mqry_Select = new TMidasQuery(this, u"Mqry_Select"_s);
    Mqry_Update = new TMidasQuery(this, u"Mqry_Update"_s);

    // Made before the form's widgets: the list leads the tab order and has
    // the focus while browsing.
    Dbg_Tbjl = NewRowGrid(this, "Dbg_Tbjl");
    Dbg_Tbjl->horizontalHeader()->setStretchLastSection(true);
    grid_ = TDBGridBinding::ReadOnlyList(Dbg_Tbjl, Mqry_Tbjl,
                                         {{u"TBLX"_s, u"类型"_s, 40},
                                          {u"TBYY"_s, u"退补原因"_s, 440},
                                          {u"JBR"_s, u"经办人"_s, 70},
                                          {u"JBRQ"_s, u"经办日期"_s, 150},
                                          {u"ZT"_s, u"状态"_s, 60},
                                          {u"TBCDH"_s, u"退补单号"_s, 90}},
                                         this);

    setupUi(this);
    Lay_Tbjl->addWidget(Dbg_Tbjl);
    SetCancelButton(Bbtn_Tc);

    Lv_Mx->setHeaderLabels({u"年月"_s, u"计费点"_s, u"电价码"_s, u"电价(元/kWh)"_s, u"抄见电量 峰/平/谷"_s,
                            u"退补 峰"_s, u"退补 平"_s, u"退补 谷"_s, u"退补电量(kWh)"_s, u"退补电费(元)"_s,
                            u"计算式"_s});
    const int widths[] = {60, 50, 55, 85, 130, 60, 60, 60, 90, 90};
    for (int i = 0; i < int(std::size(widths)); ++i) Lv_Mx->header()->resizeSection(i, widths[i]);

    Handle(Bbtn_Xz, &QPushButton::clicked, &Tjl_Tbdl_Frm::Bbtn_XzClick);
    Handle(Bbtn_Sc, &QPushButton::clicked, &Tjl_Tbdl_Frm::Bbtn_ScClick);
    Handle(Bbtn_Js, &QPushButton::clicked, &Tjl_Tbdl_Frm::Bbtn_JsClick);
    Handle(Bbtn_Bc, &QPushButton::clicked, &Tjl_Tbdl_Frm::Bbtn_BcClick);
    Handle(Bbtn_Qx, &QPushButton::clicked, &Tjl_Tbdl_Frm::Bbtn_QxClick);
    Handle(Bbtn_Tc, &QPushButton::clicked, &Tjl_Tbdl_Frm::Bbtn_TcClick);
    for (QRadioButton* rb : {Rb_Wc, Rb_Xs, Rb_Dl}) Handle(rb, &QRadioButton::toggled, &Tjl_Tbdl_Frm::Rb_YjClick);
    Handle(Mqry_Tbjl, &TMidasQuery::currentChanged, &Tjl_Tbdl_Frm::Dbg_TbjlRowChange);
    // Figures shown must be the figures of what is typed: any change of an
    // input takes the preview away until it is calculated again.
    for (QLineEdit* e : {Edt_Qsny, Edt_Zzny, Edt_Wc, Edt_Gzxs, Edt_Hddl})
        Handle(e, &QLineEdit::textChanged, &Tjl_Tbdl_Frm::InvalidatePreview);
    for (QComboBox* c : {Cob_Jfdbh, Cob_Tblx}) Handle(c, &QComboBox::currentIndexChanged, &Tjl_Tbdl_Frm::InvalidatePreview);
}

void Tjl_Tbdl_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    dSysDate = WfGetSysDate();
    Edt_Cdbh->setText(sCdbh);
    Edt_Hh->setText(sHh);
    OpenSql(Mqry_Select, u"select hm from y_khda where hh = :hh"_s, {{"hh", sHh}});
    Edt_Hm->setText(Mqry_Select->FieldByName(u"hm"_s).AsString());

    // The equipment taken off in this case: its billing point is the one a
    // new decision starts from.
    OpenSql(Mqry_Select,
            u"select dnbcch, jfdbh, bgsm from a_dnbfa where cdbh = :cdbh and bgsm <> '新装' order by jldbh"_s,
            {{"cdbh", sCdbh}});
    QStringList removed;
    QString point;
    for (Mqry_Select->First(); !Mqry_Select->Eof(); Mqry_Select->Next()) {
        const QString jfdbh = Mqry_Select->FieldByName(u"jfdbh"_s).AsString();
        if (point.isEmpty()) point = jfdbh;
        removed << u"出厂号%1（计费点%2，%3）"_s.arg(Mqry_Select->FieldByName(u"dnbcch"_s).AsString(), jfdbh,
                                                   Mqry_Select->FieldByName(u"bgsm"_s).AsString());
    }
    Lab_Dnb->setText(u"拆回电能表："_s + (removed.isEmpty() ? u"无"_s : removed.join(u"；"_s)));

    {
        const QSignalBlocker quiet(Cob_Jfdbh);
        Cob_Jfdbh->clear();
        Cob_Jfdbh->addItem(kAll);
        OpenSql(Mqry_Select, u"select distinct jfdbh from b_dltzxx where hh = :hh order by jfdbh"_s, {{"hh", sHh}});
        for (Mqry_Select->First(); !Mqry_Select->Eof(); Mqry_Select->Next())
            Cob_Jfdbh->addItem(Mqry_Select->FieldByName(u"jfdbh"_s).AsString());
        Mqry_Select->Close();
        const int at = Cob_Jfdbh->findText(point);
        Cob_Jfdbh->setCurrentIndex(at > 0 ? at : Cob_Jfdbh->count() == 2 ? 1 : 0);
    }
    OpenTbjl();
    SetEditMode(0);
    Rb_YjClick();
    Dbg_Tbjl->setFocus();
}

void Tjl_Tbdl_Frm::OpenTbjl() {
    OpenSql(Mqry_Tbjl,
            u"select tblx, tbyy, jbr, jbrq, tbcdh, case when tbcdh is null then '未发送' else '已发送' end zt "
            "from b_tbjl where glcdbh = :cdbh order by jbrq, tbyy"_s,
            {{"cdbh", sCdbh}});
    Dbg_TbjlRowChange();
}

void Tjl_Tbdl_Frm::SetEditMode(int mode) {
    iEditMode = mode;
    const bool add = mode == 1;
    Gb_Js->setEnabled(add);
    Dbg_Tbjl->setEnabled(!add);
    Bbtn_Xz->setEnabled(!add && !sCdbh.isEmpty() && !sHh.isEmpty());
    Bbtn_Sc->setEnabled(!add && Mqry_Tbjl->Active() && !Mqry_Tbjl->IsEmpty());
    Bbtn_Js->setEnabled(add);
    Bbtn_Qx->setEnabled(add);
    Bbtn_Bc->setEnabled(add && bPreview);
}

void Tjl_Tbdl_Frm::Rb_YjClick() {
    Edt_Wc->setEnabled(Rb_Wc->isChecked());
    Edt_Gzxs->setEnabled(Rb_Xs->isChecked());
    Edt_Hddl->setEnabled(Rb_Dl->isChecked());
    // Only a stated energy needs its direction told; the others give it.
    Cob_Tblx->setEnabled(Rb_Dl->isChecked());
    InvalidatePreview();
}

void Tjl_Tbdl_Frm::InvalidatePreview() {
    if (iEditMode != 1) return;
    bPreview = false;
    rows_.clear();
    Lv_Mx->clear();
    Lab_Gs->clear();
    Bbtn_Bc->setEnabled(false);
}

// The selected decision's detail rows, while browsing.
void Tjl_Tbdl_Frm::Dbg_TbjlRowChange() {
    if (iEditMode != 0) return;
    QVector<TTbRow> rows;
    if (Mqry_Tbjl->Active() && !Mqry_Tbjl->IsEmpty()) {
        const QString tbcdh = Mqry_Tbjl->FieldByName(u"tbcdh"_s).AsString();
        const TExtent x = ParseExtent(Mqry_Tbjl->FieldByName(u"tbyy"_s).AsString());
        OpenSql(Mqry_Select,
                u"select ny, jfdbh, fdl, pdl, gdl, fdf, pdf, gdf from b_tbdfxx where tbcdh = :tbcdh "
                "order by ny, jfdbh"_s,
                {{"tbcdh", tbcdh.isEmpty() ? sCdbh : tbcdh}});
        for (Mqry_Select->First(); !Mqry_Select->Eof(); Mqry_Select->Next()) {
            TTbRow r;
            r.Ny = Mqry_Select->FieldByName(u"ny"_s).AsString();
            r.Jfdbh = Mqry_Select->FieldByName(u"jfdbh"_s).AsString();
            if (x.Valid && (r.Ny < x.Qsny || r.Ny > x.Zzny || !x.Jfdbh.contains(r.Jfdbh))) continue;
            const auto kwh = [&](const char* f) { return Kwh(Mqry_Select->FieldByName(QLatin1String(f)).AsFloat()); };
            const auto fen = [&](const char* f) { return qint64(std::llround(Mqry_Select->FieldByName(QLatin1String(f)).AsFloat() * 100)); };
            r.Fdl = kwh("fdl"), r.Pdl = kwh("pdl"), r.Gdl = kwh("gdl");
            r.Fdf = fen("fdf"), r.Pdf = fen("pdf"), r.Gdf = fen("gdf");
            rows << r;
        }
        Mqry_Select->Close();
    }
    Lab_Gs->setText(rows.isEmpty() ? QString() : u"所选退补记录的明细：补为正，退为负。"_s);
    ShowRows(rows, false);
}

void Tjl_Tbdl_Frm::ShowRows(const QVector<TTbRow>& rows, bool withInputs) {
    Lv_Mx->clear();
    qint64 f = 0, p = 0, g = 0, df = 0;
    for (const TTbRow& r : rows) {
        QStringList cells{r.Ny, r.Jfdbh};
        if (withInputs)
            cells << r.Djm << QString::number(double(r.Dj4) / 10000.0, 'f', 4)
                  << Num(r.Jffdl) + u'/' + Num(r.Jfpdl) + u'/' + Num(r.Jfgdl);
        else
            cells << QString() << QString() << QString();
        cells << QString::number(r.Fdl) << QString::number(r.Pdl) << QString::number(r.Gdl)
              << QString::number(r.Dl()) << Yuan(r.Df()) << r.Formula;
        new QTreeWidgetItem(Lv_Mx, cells);
        f += r.Fdl, p += r.Pdl, g += r.Gdl, df += r.Df();
    }
    if (rows.isEmpty()) return;
    const QStringList total{u"合计"_s, QString(), QString(), QString(), QString(), QString::number(f),
                            QString::number(p), QString::number(g), QString::number(f + p + g), Yuan(df)};
    auto* sum = new QTreeWidgetItem(Lv_Mx, total);
    QFont bold = sum->font(0);
    bold.setBold(true);
    for (int c = 0; c < Lv_Mx->columnCount(); ++c) sum->setFont(c, bold);
    for (int i = 0; i < Lv_Mx->topLevelItemCount(); ++i)
        for (int c = 3; c < 10; ++c) Lv_Mx->topLevelItem(i)->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
}

void Tjl_Tbdl_Frm::Bbtn_XzClick() {
    for (QLineEdit* e : {Edt_Qsny, Edt_Wc, Edt_Gzxs, Edt_Hddl, Edt_Bz}) e->clear();
    // The last billed month: the month before the server's.
    Edt_Zzny->setText(dSysDate.date().addMonths(-1).toString(u"yyyyMM"_s));
    Rb_Wc->setChecked(true);
    Cob_Tblx->setCurrentIndex(0);
    rows_.clear();
    bPreview = false;
    Lv_Mx->clear();
    Lab_Gs->clear();
    SetEditMode(1);
    Rb_YjClick();
    Edt_Qsny->setFocus();
}

void Tjl_Tbdl_Frm::Bbtn_QxClick() {
    rows_.clear();
    bPreview = false;
    SetEditMode(0);
    Dbg_TbjlRowChange();
    Dbg_Tbjl->setFocus();
}

void Tjl_Tbdl_Frm::Bbtn_TcClick() { close(); }

void Tjl_Tbdl_Frm::done(int result) {
    if (iEditMode == 1 && AskYesNo(u"退补记录尚未保存，确定退出吗？"_s) != mrYes) return;
    TZt_Template_Frm::done(result);
}

bool Tjl_Tbdl_Frm::ReadMonth(QLineEdit* edit, const QString& what, QString& ny) {
    ny = edit->text().trimmed();
    if (ny.isEmpty()) return Refuse(edit, u"请输入"_s + what + u"！"_s);
    static const QRegularExpression re(u"^(\\d{4})(\\d{2})$"_s);
    const QRegularExpressionMatch m = re.match(ny);
    if (!m.hasMatch() || m.captured(1).toInt() < 1900 || m.captured(2).toInt() < 1 || m.captured(2).toInt() > 12)
        return Refuse(edit, what + u"应为六位年月，如202401！"_s);
    return true;
}

bool Tjl_Tbdl_Frm::ReadNumber(QLineEdit* edit, const QString& what, double& value) {
    QString text = edit->text().trimmed();
    if (text.endsWith(u'%')) text.chop(1);
    if (text.isEmpty()) return Refuse(edit, u"请输入"_s + what + u"！"_s);
    if (!CheckFloatStr(text)) return Refuse(edit, what + u"必须是数字！"_s);
    value = text.toDouble();
    return true;
}

QString Tjl_Tbdl_Frm::Extent() const {
    return sQsny + u'-' + sZzny + u"，计费点"_s + slJfdbh.join(u'、') + u'：';
}

bool Tjl_Tbdl_Frm::Calculate() {
    InvalidatePreview();
    if (!ReadMonth(Edt_Qsny, u"起始年月"_s, sQsny) || !ReadMonth(Edt_Zzny, u"终止年月"_s, sZzny)) return false;
    if (sQsny > sZzny) return Refuse(Edt_Qsny, u"起始年月不能大于终止年月！"_s);
    double v = 0;
    if (Rb_Wc->isChecked()) {
        if (!ReadNumber(Edt_Wc, u"电能表误差"_s, v)) return false;
        if (v <= -100) return Refuse(Edt_Wc, u"电能表误差不能小于或等于-100%！表计不走字时请按核定电量退补。"_s);
    } else if (Rb_Xs->isChecked()) {
        if (!ReadNumber(Edt_Gzxs, u"更正系数"_s, v)) return false;
        if (v <= 0) return Refuse(Edt_Gzxs, u"更正系数必须大于零！"_s);
    } else {
        if (!ReadNumber(Edt_Hddl, u"核定电量"_s, v)) return false;
        if (Kwh(v) <= 0) return Refuse(Edt_Hddl, u"核定电量必须大于零，退还或补收请选择退补类型！"_s);
    }

    // The ledger of the period, each month at its own tariff code.
    const bool onePoint = Cob_Jfdbh->currentIndex() > 0;
    PrepareSql(Mqry_Select,
               u"select a.ny, a.jfdbh, a.jffdl, a.jfpdl, a.jfgdl, a.djm, b.dj from b_dltzxx a, b_djb b "
               "where a.hh = :hh and a.ny >= :qsny and a.ny <= :zzny and a.djm = b.djm(+) "_s +
                   (onePoint ? u"and a.jfdbh = :jfdbh "_s : QString()) + u"order by a.ny, a.jfdbh"_s,
               {{"hh", sHh}, {"qsny", sQsny}, {"zzny", sZzny}});
    if (onePoint) Mqry_Select->ParamByName(u"jfdbh"_s).SetAsString(Cob_Jfdbh->currentText());
    Mqry_Select->Open();
    QVector<TTbRow> rows;
    slJfdbh.clear();
    for (Mqry_Select->First(); !Mqry_Select->Eof(); Mqry_Select->Next()) {
        TTbRow r;
        r.Ny = Mqry_Select->FieldByName(u"ny"_s).AsString();
        r.Jfdbh = Mqry_Select->FieldByName(u"jfdbh"_s).AsString();
        r.Djm = Mqry_Select->FieldByName(u"djm"_s).AsString();
        if (Mqry_Select->FieldByName(u"dj"_s).IsNull()) {
            Mqry_Select->Close();
            ShowInfoMsg(u"%1计费点%2的电价码“%3”在电价表中不存在，无法计算电费！"_s.arg(r.Ny, r.Jfdbh, r.Djm));
            return false;
        }
        r.Dj4 = qRound64(Mqry_Select->FieldByName(u"dj"_s).AsFloat() * 10000);
        r.Jffdl = Mqry_Select->FieldByName(u"jffdl"_s).AsFloat();
        r.Jfpdl = Mqry_Select->FieldByName(u"jfpdl"_s).AsFloat();
        r.Jfgdl = Mqry_Select->FieldByName(u"jfgdl"_s).AsFloat();
        if (!slJfdbh.contains(r.Jfdbh)) slJfdbh << r.Jfdbh;
        rows << r;
    }
    Mqry_Select->Close();
    if (rows.isEmpty())
        return Refuse(Edt_Qsny, u"该户%1至%2%3没有电量记录，无法计算退补电量！"_s.arg(
                                    sQsny, sZzny, onePoint ? u"计费点"_s + Cob_Jfdbh->currentText() : QString()));
    slJfdbh.sort();
    // A month of a billing point is corrected once per case.
    const TExtent mine{sQsny, sZzny, slJfdbh, true};
    for (Mqry_Tbjl->First(); !Mqry_Tbjl->Eof(); Mqry_Tbjl->Next()) {
        const TExtent other = ParseExtent(Mqry_Tbjl->FieldByName(u"tbyy"_s).AsString());
        if (other.Valid && Overlaps(mine, other))
            return Refuse(Edt_Qsny, u"该期间的电量已有退补记录（%1-%2，计费点%3），不能重复退补！"_s.arg(
                                        other.Qsny, other.Zzny, other.Jfdbh.join(u'、')));
    }

    QString formula;
    if (Rb_Wc->isChecked()) {
        // Recorded = true × (1 + e): the true energy is recorded ÷ (1 + e).
        for (TTbRow& r : rows) {
            const auto d = [v](double recorded) { return Kwh(recorded * -v / (100 + v)); };
            r.Fdl = d(r.Jffdl), r.Pdl = d(r.Jfpdl), r.Gdl = d(r.Jfgdl);
            const QString total = Num(r.Jffdl + r.Jfpdl + r.Jfgdl);
            r.Formula = u"%1÷(%2)−%1"_s.arg(total, OnePlus(v));
        }
        sYj = u"电能表误差"_s + Num(v) + u'%';
        formula = u"实际电量 = 抄见电量 ÷ (1 + 误差)，退补电量 = 实际电量 − 抄见电量；误差 %1%。"_s.arg(Num(v));
    } else if (Rb_Xs->isChecked()) {
        for (TTbRow& r : rows) {
            const auto d = [v](double recorded) { return Kwh(recorded * (v - 1)); };
            r.Fdl = d(r.Jffdl), r.Pdl = d(r.Jfpdl), r.Gdl = d(r.Jfgdl);
            r.Formula = u"%1×(%2−1)"_s.arg(Num(r.Jffdl + r.Jfpdl + r.Jfgdl), Num(v));
        }
        sYj = u"错接线更正系数"_s + Num(v);
        formula = u"实际电量 = 抄见电量 × 更正系数，退补电量 = 实际电量 − 抄见电量；更正系数 %1。"_s.arg(Num(v));
    } else {
        // The stated energy is shared out in proportion to what was
        // recorded, so each month and time band bears its own tariff; with
        // nothing recorded (a stopped meter), evenly over the months, flat.
        const qint64 q = Kwh(v) * (Cob_Tblx->currentText() == kTui ? -1 : 1);
        double all = 0;
        for (const TTbRow& r : rows) all += r.Jffdl + r.Jfpdl + r.Jfgdl;
        double seen = 0;
        qint64 given = 0;
        const auto share = [&](double w) {
            seen += w;
            const qint64 upTo = all > 0 ? Kwh(double(q) * seen / all) : Kwh(double(q) * seen / rows.size());
            const qint64 part = upTo - given;
            given = upTo;
            return part;
        };
        for (TTbRow& r : rows) {
            if (all > 0) {
                r.Fdl = share(r.Jffdl), r.Pdl = share(r.Jfpdl), r.Gdl = share(r.Jfgdl);
                r.Formula = u"%1×%2÷%3"_s.arg(QString::number(q), Num(r.Jffdl + r.Jfpdl + r.Jfgdl), Num(all));
            } else {
                r.Pdl = share(1);
                r.Formula = u"%1÷%2"_s.arg(QString::number(q)).arg(rows.size());
            }
        }
        sYj = u"核定电量"_s + QString::number(std::abs(q)) + u"kWh"_s;
        formula = u"核定电量 %1 kWh 按各月各时段抄见电量的比例分摊（无抄见电量时按月平均计入平段）。"_s.arg(Num(v));
    }
    qint64 total = 0;
    for (TTbRow& r : rows) {
        r.Fdf = Fen(r.Fdl, r.Dj4), r.Pdf = Fen(r.Pdl, r.Dj4), r.Gdf = Fen(r.Gdl, r.Dj4);
        total += r.Dl();
    }
    if (total == 0)
        return Refuse(Rb_Wc->isChecked() ? Edt_Wc : Rb_Xs->isChecked() ? Edt_Gzxs : Edt_Hddl,
                      u"计算所得退补电量为零，不需要退补！"_s);
    sTblx = total > 0 ? kBu : kTui;
    {
        const QSignalBlocker quiet(Cob_Tblx);
        Cob_Tblx->setCurrentText(sTblx);
    }
    rows_ = rows;
    Lab_Gs->setText(formula + u"峰、平、谷分别计算，取整到千瓦时；退补电费 = 退补电量 × 当月电价，保留到分。"
                              "补为正，退为负；基本电费和功率因数调整电费不在此退补。"_s);
    ShowRows(rows_, true);
    return true;
}

void Tjl_Tbdl_Frm::Bbtn_JsClick() {
    bPreview = Calculate();
    Bbtn_Bc->setEnabled(bPreview);
}

void Tjl_Tbdl_Frm::Bbtn_BcClick() {
    if (!bPreview) {
        ShowInfoMsg(u"请先计算并核对退补明细，再保存！"_s);
        return;
    }
    // Calculated again from what the ledger and tariffs say now; what is
    // saved is what the preview then shows.
    if (!Calculate()) return;
    bPreview = true;
    const QString tbyy = Extent() + sYj + u'，' + (sTblx == kBu ? u"补收"_s : u"退还"_s) + u"电量电费。"_s +
                         Edt_Bz->text().trimmed();
    TCustomMidasDataBase& db = Mqry_Update->DataBase();
    db.StartTransaction();
    ExecSql(Mqry_Update,
            u"insert into b_tbjl (glcdbh, hh, tblx, tbyy, jbr, jbrq, dw) "
            "values (:glcdbh, :hh, :tblx, :tbyy, :jbr, :jbrq, :dw)"_s,
            {{"glcdbh", sCdbh}, {"hh", sHh}, {"tblx", sTblx}, {"tbyy", tbyy}, {"jbr", Gczyxm.isEmpty() ? Gczydm : Gczyxm},
             {"jbrq", dSysDate}, {"dw", Gdw}});
    for (const TTbRow& r : rows_) {
        if (r.Fdl == 0 && r.Pdl == 0 && r.Gdl == 0) continue;
        ExecSql(Mqry_Update,
                u"insert into b_tbdfxx (tbcdh, hh, ny, jfdbh, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) "
                "values (:tbcdh, :hh, :ny, :jfdbh, :fdl, :gdl, :pdl, :fdf, :gdf, :pdf, 0, 0, 0, 0, 0)"_s,
                {{"tbcdh", sCdbh}, {"hh", sHh}, {"ny", r.Ny}, {"jfdbh", r.Jfdbh}, {"fdl", r.Fdl}, {"gdl", r.Gdl},
                 {"pdl", r.Pdl}, {"fdf", double(r.Fdf) / 100}, {"gdf", double(r.Gdf) / 100},
                 {"pdf", double(r.Pdf) / 100}});
    }
    db.Commit();
    rows_.clear();
    bPreview = false;
    SetEditMode(0);
    OpenTbjl();
    Mqry_Tbjl->Locate(u"tbyy"_s, tbyy);
    SetEditMode(0);
    Dbg_Tbjl->setFocus();
}

void Tjl_Tbdl_Frm::Bbtn_ScClick() {
    if (!Mqry_Tbjl->Active() || Mqry_Tbjl->IsEmpty()) {
        ShowInfoMsg(u"没有可删除的退补记录！"_s);
        return;
    }
    const QString tbcdh = Mqry_Tbjl->FieldByName(u"tbcdh"_s).AsString();
    if (!tbcdh.isEmpty()) {
        ShowInfoMsg(u"该退补记录已发送（退补单号%1），不能删除！"_s.arg(tbcdh));
        return;
    }
    if (AskYesNo(u"确定删除选中的退补记录吗？"_s) != mrYes) return;
    const QString tbyy = Mqry_Tbjl->FieldByName(u"tbyy"_s).AsString();
    const TExtent x = ParseExtent(tbyy);
    TCustomMidasDataBase& db = Mqry_Update->DataBase();
    db.StartTransaction();
    for (const QString& jfdbh : x.Jfdbh)
        ExecSql(Mqry_Update,
                u"delete from b_tbdfxx where tbcdh = :cdbh and jfdbh = :jfdbh and ny >= :qsny and ny <= :zzny"_s,
                {{"cdbh", sCdbh}, {"jfdbh", jfdbh}, {"qsny", x.Qsny}, {"zzny", x.Zzny}});
    ExecSql(Mqry_Update, u"delete from b_tbjl where glcdbh = :cdbh and tbcdh is null and tbyy = :tbyy"_s,
            {{"cdbh", sCdbh}, {"tbyy", tbyy}});
    db.Commit();
    OpenTbjl();
    SetEditMode(0);
}

void Tjl_Tbdl_Frm::MoveDetailsToDocument(const QString& cdbh, const QString& tbcdh) {
    TMidasQuery q;
    ExecSql(&q, u"update b_tbdfxx set tbcdh = :tbcdh where tbcdh = :cdbh"_s, {{"tbcdh", tbcdh}, {"cdbh", cdbh}});
}
