#include "unit_zt_pubfun.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWidget>
#include <limits>

#include "data/Dm_Zt_Funcs.h"
#include "data/MidasQuery.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;

namespace {

TMidasQuery* scratch() {
    if (!Zt_Funcs_Dm || !Zt_Funcs_Dm->Mqry_Select)
        throw EDatabaseError(u"Zt_Funcs_Dm: the data module is not created"_s);
    return Zt_Funcs_Dm->Mqry_Select;
}

// The server's clock as text in an Oracle to_char format.
QString serverClockText(const QString& format) {
    static const QString kText = u"select to_char(sysdate,:format) from dual"_s;
    TMidasQuery* q = scratch();
    q->Close();
    // Read many times in a row (a dispatch reads it per task): the text is
    // set only when another one stands there.
    if (q->SQL().Text() != kText) {
        q->SQL().Clear();
        q->SQL().Add(kText);
    }
    q->ParamByName(u"format"_s).SetAsString(format);
    q->Open();
    const QString text = q->Fields(0).AsString();
    q->Close();
    return text;
}

// One stored numbering function through an anonymous block whose single
// output parameter carries the number; "-1" means none was drawn.
QString drawNumber(const QString& block, const QString& param) {
    TMidasQuery* q = scratch();
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(block);
    q->Params().Clear();
    q->Params().CreateParam(ftString, param, ptOutput);
    q->ExecSQL();
    const QString number = q->ParamByName(param).AsString();
    q->Close();
    return number == "-1"_L1 ? QString() : number;
}

// A decimal integer as the original string conversion reads it: leading
// blanks, an optional sign, digits only, within [lo, hi].
bool readsAsInteger(const QString& s, qint64 lo, qint64 hi) {
    qsizetype i = 0;
    while (i < s.size() && s.at(i) == u' ') ++i;
    bool negative = false;
    if (i < s.size() && (s.at(i) == u'-' || s.at(i) == u'+')) negative = s.at(i++) == u'-';
    if (i >= s.size()) return false;
    // Magnitude limit for the sign: |lo| may exceed hi by one.
    const quint64 limit = negative ? quint64(-(lo + 1)) + 1 : quint64(hi);
    quint64 value = 0;
    for (; i < s.size(); ++i) {
        const QChar c = s.at(i);
        if (c < u'0' || c > u'9') return false;
        const quint64 digit = quint64(c.unicode() - u'0');
        if (value > (limit - digit) / 10) return false;
        value = value * 10 + digit;
    }
    return true;
}

// An edit that belongs to a composite control (combo box, spin box, date
// edit) is that control's own part, not a single-line edit of the screen.
bool isInnerEdit(const QWidget* w, const QWidget* screen) {
    for (const QWidget* p = w->parentWidget(); p && p != screen; p = p->parentWidget())
        if (qobject_cast<const QComboBox*>(p) || qobject_cast<const QAbstractSpinBox*>(p)) return true;
    return false;
}

}  // namespace

// ------------------------------------------------------------ server clock

// "YYYY-MM-DD[ HH:MM:SS]" read by position: the clock is read often, and a
// format parse costs more than the query on SQLite. Anything else is invalid.
static QDateTime clockValue(const QString& text) {
    const auto number = [&text](int from, int length) {
        bool ok = false;
        const int n = QStringView(text).mid(from, length).toInt(&ok);
        return ok ? n : -1;
    };
    const QDate day(number(0, 4), number(5, 2), number(8, 2));
    if (text.size() == 10) return day.startOfDay();
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    if (text.size() != 19 || !day.isValid() || !time.isValid()) return {};
    return QDateTime(day, time);
}

QDateTime GetServerDateTime() { return clockValue(serverClockText(u"YYYY-MM-DD HH24:mi:ss"_s)); }

QDateTime GetServerDate() { return clockValue(serverClockText(u"YYYY-MM-DD"_s)); }

QString GetServerNy() {
    const QString text = serverClockText(u"YYYY-MM-DD"_s);
    return text.mid(0, 4) + text.mid(5, 2);
}

// ----------------------------------------------------------------- numbers

QString GetNewCdbh() { return drawNumber(u"Begin :CDBH := GET_CDBH; End;"_s, u"CDBH"_s); }

QString GetNewGdfabh() { return drawNumber(u"Begin :Gdfabh := GET_GDFABH; End;"_s, u"GDFABH"_s); }

QString GetNewDnbId() { return drawNumber(u"Begin :DnbId := GET_DNBID; End;"_s, u"DNBID"_s); }

QString GetNewJcph() { return drawNumber(u"Begin :JCPH := GET_JCPH; End;"_s, u"JCPH"_s); }

// --------------------------------------------------------------- customers

QString CheckKhSqxx(const QString& hh) {
    TMidasQuery* q = scratch();
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(
        u"Select A.cdbh,A.HH,A.Hm,B.dqywxmc,a.ywdm From A_KHSQXX A,Z_DQGW B Where A.HH= :HH and A.CDbh = B.Cdbh  and instr(:ywdm,A.ywdm) = 0 "_s);
    q->ParamByName(u"HH"_s).SetAsString(hh);
    // Applications of these businesses never stand in the way.
    q->ParamByName(u"ywdm"_s).SetAsString(u"130/126/131/132/133/139/141"_s);
    q->Open();
    QString result;
    for (q->First(); !q->Eof(); q->Next()) {
        // A change of name (120) goes ahead of a pending 135 case: nothing
        // after it is listed.
        if (ywdm == "120"_L1 && q->FieldByName(u"YWDM"_s).AsString() == "135"_L1) break;
        result += u"传单编号:"_s + q->FieldByName(u"CDBH"_s).AsString() + u"/户名:"_s +
                  q->FieldByName(u"HM"_s).AsString() + u"/当前业务项:"_s +
                  q->FieldByName(u"DQYWXMC"_s).AsString() + u";  "_s;
    }
    q->Close();
    return result;
}

bool IsValidKh(const QString& khbh, const QString& dw) {
    TMidasQuery* q = scratch();
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(u"Select HH From Y_KHDA Where HH= :KHBH and XHBZ = '否' and dw = :dw"_s);
    q->ParamByName(u"KHBH"_s).SetAsString(khbh);
    q->ParamByName(u"dw"_s).SetAsString(dw);
    q->Open();
    const bool found = !q->IsEmpty();
    q->Close();
    return found;
}

// ------------------------------------------------------------ input checks

bool IsIntStr(const QString& s) {
    return readsAsInteger(s, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
}

bool IsCdbh(const QString& s) {
    return s.size() == 10 &&
           readsAsInteger(s, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max());
}

QString ZeroPad(const QString& s, int n) {
    if (n <= 0) return {};
    return (QString(n, u'0') + s).right(n);
}

// ------------------------------------------------------------- form chores

void FillComboBox(QComboBox* comboBox, const QString& sql) {
    TMidasQuery* q = scratch();
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(sql);
    q->Open();
    for (q->First(); !q->Eof(); q->Next())
        if (comboBox) comboBox->addItem(q->Fields(0).AsString());
    q->Close();
}

void ClearFormEdits(QObject* component) {
    auto* screen = qobject_cast<QWidget*>(component);
    if (!screen || !screen->isWindow()) return;
    // Only the screen's own controls: a dialog parented to it is a screen
    // of its own.
    for (QLineEdit* e : screen->findChildren<QLineEdit*>())
        if (e->window() == screen && !isInnerEdit(e, screen)) e->clear();
    for (QTextEdit* m : screen->findChildren<QTextEdit*>())
        if (m->window() == screen) m->clear();
    for (QPlainTextEdit* m : screen->findChildren<QPlainTextEdit*>())
        if (m->window() == screen) m->clear();
}
