#include "Unt_Yk_Ckd.h"

#include <stdexcept>

#include "common/unt_jc_fuc.h"
#include "data/Dm_Yk_DataSet.h"

using namespace Qt::StringLiterals;
using tarvin::report::EReportError;
using tarvin::report::TReport;

namespace {

const QString kReportName = u"ckd"_s;

[[noreturn]] void refuse(const QString& text) { throw std::runtime_error(text.toStdString()); }

}  // namespace

void PrepareCkd(TReport& FRDB_Ckd, const QString& cdbh, const QString& dw) {
    if (!DataSet_Yk_Dm) refuse(u"打印查勘单出错：业务扩展数据模块未创建。"_s);
    TMidasQuery* rows = DataSet_Yk_Dm->Mqry_Ckd;
    rows->Close();
    rows->ParamByName(u"CDBH"_s).SetAsString(cdbh);
    rows->Open();
    if (rows->IsEmpty()) refuse(u"传单编号为%1的申请信息不存在，无法打印查勘单。"_s.arg(cdbh));
    try {
        FRDB_Ckd.LoadFromDatabase(kReportName);
        FRDB_Ckd.Variables().Clear();
        FRDB_Ckd.Variables().Add("Cdbh='" + QuotedSqlText(cdbh) + "'");
        FRDB_Ckd.Variables().Add("dw='" + QuotedSqlText(dw) + "'");
        FRDB_Ckd.SetDataSet(rows);
        FRDB_Ckd.Prepare();
    } catch (const EReportError& e) {
        // Say which layout and what is wrong, so the administrator knows
        // what to restore.
        refuse(u"打印查勘单出错："_s + e.message() + u"\n请系统管理员检查报表定义（z_report）。"_s);
    }
}

void PrintCkd(QWidget* parent, const QString& cdbh, const QString& dw) {
    TReport FRDB_Ckd;
    PrepareCkd(FRDB_Ckd, cdbh, dw);
    FRDB_Ckd.Preview(parent);
    // The rows serve the preview only.
    DataSet_Yk_Dm->Mqry_Ckd->Close();
}
