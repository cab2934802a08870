#include "Frm_Jc_Bjtx.h"

#include "frame/Unit_zt_gobal.h"
#include "common/Unt_Jc_Message.h"
#include "common/unit_zt_pubfun.h"

#include "ui_Frm_Jc_Bjtx.h"

#include <QHeaderView>
#include <QTableView>

QPointer<TJc_Bjtx_Frm> Jc_Bjtx_Frm;

const QStringList& TJc_Bjtx_Frm::ListSql() {
    // Z_YWX stands in the join without a condition and DISTINCT takes the
    // repetition away again; both are kept as the list always had them.
    static const QStringList sql{
        QStringLiteral("SELECT DISTINCT C.*,D.HM,D.YDDZ "),
        QStringLiteral("FROM e_bjtx C,Y_KHDA D,Z_YWX E"),
        QStringLiteral("WHERE "),
        QStringLiteral("  C.ZT='未处理'"),
        QStringLiteral(" AND C.HH = D.HH and c.dw=:dw"),
        QStringLiteral(" And exists(select 1 from "),
        QStringLiteral("    z_czyygw a1,z_gw b1,z_gwyzn c1 ,"),
        QStringLiteral("    z_ywzn d1,z_znyywx e1"),
        QStringLiteral("    where a1.czydm = :czydm"),
        QStringLiteral("      and a1.zdm  = c1.gwdm   and  c1.gwdm = b1.dm  and b1.sfyx = 1"),
        QStringLiteral("      and c1.zndm = e1.zndm   and  e1.zndm = d1.dm  and d1.sfyx = 1 "),
        QStringLiteral("      and e1.cldm ='40099')"),
        QStringLiteral(" AND EXISTS(SELECT 1 FROM e_bjxz"),
        QStringLiteral("     WHERE czydm = :czydm"),
        QStringLiteral("      AND bjdm = c.bjdm "),
        QStringLiteral("      AND sfyx='是')"),
        QStringLiteral("order by c.bjdm,c.txrq"),
    };
    return sql;
}

TJc_Bjtx_Frm::TJc_Bjtx_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(QStringLiteral("Jc_Bjtx_Frm"));

    Mqry_Bj = new TMidasQuery(this, QStringLiteral("Mqry_Bj"));
    for (const QString& line : ListSql()) Mqry_Bj->SQL().Add(line);
    Ds_Bj = new TDataSource(this, QStringLiteral("Ds_Bj"), Mqry_Bj);
    Mq_Update = new TMidasQuery(this, QStringLiteral("Mq_Update"));

    // Made before the form's widgets, so the list leads the tab order and
    // has the focus when the screen opens.
    Dbg_sx = NewRowGrid(this, "Dbg_sx");
    Dbg_sx->horizontalHeader()->setStretchLastSection(true);
    grid_ = new TDBGridBinding(Dbg_sx, Mqry_Bj, this);
    grid_->Model()->SetReadOnly(true);
    grid_->Model()->SetColumns({{QStringLiteral("NY"), QStringLiteral("年月"), 60},
                                {QStringLiteral("HH"), QStringLiteral("户号"), 90},
                                {QStringLiteral("HM"), QStringLiteral("户名"), 120},
                                {QStringLiteral("BJXM"), QStringLiteral("报警内容"), 330},
                                {QStringLiteral("TXRQ"), QStringLiteral("提醒日期"), 130}});

    setupUi(this);
    Lay_sx->addWidget(Dbg_sx);
    SetCancelButton(Bbtn_Tc);

    fields_ = new TDBFieldBinding(Mqry_Bj, this);
    fields_->Bind(Dbe_bsh, QStringLiteral("HH"));
    fields_->Bind(DBEdit1, QStringLiteral("HM"));
    fields_->Bind(Dbe_dz, QStringLiteral("YDDZ"));
    fields_->Bind(Dbe_sm, QStringLiteral("BJXM"));
    fields_->Bind(Dbe_clqk, QStringLiteral("CLQK"));

    Handle(Bbtn_Over, &QPushButton::clicked, &TJc_Bjtx_Frm::Bbtn_OverClick);
    Handle(Bbtn_Dy, &QPushButton::clicked, &TJc_Bjtx_Frm::Bbtn_DyClick);
    Handle(Bbtn_Tc, &QPushButton::clicked, &TJc_Bjtx_Frm::Bbtn_TcClick);
}

void TJc_Bjtx_Frm::Bbtn_OverClick() {
    if (Dbe_bsh->text().isEmpty()) {
        ShowInfoMsg(QStringLiteral("请选择异常报警客户！"));
        return;
    }
    const QString note = Dbe_clqk->text();
    if (note.isEmpty()) {
        ShowInfoMsg(QStringLiteral("请输入处理情况！"));
        Dbe_clqk->setFocus();
        return;
    }
    if (AskYesNo(QStringLiteral("确认该户异常已经处理结束吗？")) != mrYes) return;
    try {
        const QDateTime now = GetServerDateTime();
        Mqry_Bj->Edit();
        Mqry_Bj->FieldByName(QStringLiteral("CLR")).SetAsString(Gczyxm);
        Mqry_Bj->FieldByName(QStringLiteral("CLRQ")).SetAsDateTime(now);
        const QString ny = Mqry_Bj->FieldByName(QStringLiteral("NY")).AsString();
        const QString hh = Mqry_Bj->FieldByName(QStringLiteral("HH")).AsString();
        const QString bjdm = Mqry_Bj->FieldByName(QStringLiteral("BJDM")).AsString();

        ExecSql(Mq_Update,
                QStringLiteral("update e_bjtx set ZT = :zt,clr = :clr, clqk = :clqk,  clrq = :clrq where ny=:ny and "
                               "hh=:hh and bjdm = :bjdm"),
                {{"zt", QStringLiteral("已处理")},
                 {"clr", Gczyxm},
                 {"clqk", note},
                 {"clrq", now},
                 {"ny", ny},
                 {"hh", hh},
                 {"bjdm", bjdm}});

        // The row's local edit goes with the reopening: the list is read
        // again and the handled alarm is no longer in it.
        Mqry_Bj->Cancel();
        Mqry_Bj->Close();
        Mqry_Bj->ParamByName(QStringLiteral("czydm")).SetAsString(Gczydm);
        Mqry_Bj->Open();
    } catch (const std::exception&) {
        if (Mqry_Bj->Active()) Mqry_Bj->Cancel();
        ShowErrorMsg(QStringLiteral("保存处理情况出错"));
    }
}

void TJc_Bjtx_Frm::Bbtn_DyClick() {
    try {
        FRDB_Bjtx.LoadFromDatabase(QStringLiteral("报警提醒清单"));
        FRDB_Bjtx.Variables().Clear();
        FRDB_Bjtx.Variables().Add(QStringLiteral("Dwdm='") + Gdw + QStringLiteral("'"));
        FRDB_Bjtx.Variables().Add(QStringLiteral("Dwmc='") + Gdwmc + QStringLiteral("'"));
        FRDB_Bjtx.Variables().Add(QStringLiteral("Czydm='") + Gczydm + QStringLiteral("'"));
        FRDB_Bjtx.SetDataSet(Mqry_Bj);
        FRDB_Bjtx.Preview(this);
    } catch (const std::exception& e) {
        // A missing or broken layout in z_report: say which, so the
        // administrator knows what to restore.
        ShowErrorMsg(QStringLiteral("打印报警提醒清单出错：%1\n请系统管理员检查报表定义（z_report）。")
                         .arg(QString::fromUtf8(e.what())));
    }
}

void TJc_Bjtx_Frm::Bbtn_TcClick() { close(); }

bool TJc_Bjtx_Frm::FormCloseQuery() {
    try {
        ExecSql(Mq_Update,
                QStringLiteral(
                    "update e_bjtx c set  txrq = :txrq where  Txrq is null  and c.dw=:dw and exists(select 1 from   "
                    "z_czyygw a1,z_gw b1,z_gwyzn c1 ,  z_ywzn d1,z_znyywx e1   where a1.czydm = :czydm    and a1.zdm  = "
                    "c1.gwdm   and  c1.gwdm = b1.dm  and b1.sfyx = 1  and c1.zndm = e1.zndm   and  e1.zndm = d1.dm  "
                    "and d1.sfyx = 1  and e1.cldm ='40099')   AND EXISTS(SELECT 1 FROM e_bjxz  WHERE czydm = :czydm  "
                    "AND bjdm = c.bjdm AND sfyx='是') "),
                {{"dw", Gdw}, {"txrq", GetServerDateTime()}, {"czydm", Gczydm}});
    } catch (const std::exception&) {
        ShowErrorMsg(QStringLiteral("保存提醒日期出错"));
    }
    return true;
}

void TJc_Bjtx_Frm::done(int result) {
    if (isVisible() && !FormCloseQuery()) return;
    TZt_Template_Frm::done(result);
}
