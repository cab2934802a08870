#include "MidasQuery.h"

#include <QHash>
#include <QPointer>
#include <QScopeGuard>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>

#include "Connection.h"

using tarvin::sql::Dialect;
using tarvin::sql::Translated;

namespace {

const QString kDateTimeFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");

QVariant nullVariant() { return QVariant(); }

bool isNullValue(const QVariant& v) { return !v.isValid() || v.isNull(); }

// Oracle and the original middleware kept no empty texts: '' is null.
QVariant normalizeWritten(const QVariant& v) {
    if (isNullValue(v)) return nullVariant();
    if (v.typeId() == QMetaType::QString && v.toString().isEmpty()) return nullVariant();
    if (v.typeId() == QMetaType::QDate) return QVariant(v.toDate().startOfDay());
    return v;
}

QVariant normalizeFetched(const QVariant& v) {
    if (isNullValue(v)) return nullVariant();
    switch (v.typeId()) {
    case QMetaType::QDate: return QVariant(v.toDate().startOfDay());
    case QMetaType::Bool: return QVariant(qint64(v.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return QVariant(v.toLongLong());
    case QMetaType::QByteArray: return QVariant(QString::fromUtf8(v.toByteArray()));
    default: return v;
    }
}

QString floatText(double d) {
    if (std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 1e15)
        return QString::number(qint64(d));
    return QString::number(d, 'g', 15);
}

QDateTime parseDateTime(const QString& text) {
    const QString s = text.trimmed();
    for (const char* fmt : {"yyyy-MM-dd HH:mm:ss", "yyyy-MM-ddTHH:mm:ss", "yyyy-MM-dd HH:mm:ss.zzz",
                            "yyyy-MM-ddTHH:mm:ss.zzz", "yyyy-MM-dd", "yyyy/MM/dd HH:mm:ss", "yyyy/MM/dd",
                            "yyyyMMdd"}) {
        const QDateTime dt = QDateTime::fromString(s, QLatin1String(fmt));
        if (dt.isValid()) return dt;
    }
    return QDateTime();
}

QString variantText(const QVariant& v) {
    if (isNullValue(v)) return QString();
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: return floatText(v.toDouble());
    case QMetaType::QDateTime: return v.toDateTime().toString(kDateTimeFormat);
    case QMetaType::QDate: return v.toDate().startOfDay().toString(kDateTimeFormat);
    default: return v.toString();
    }
}

qint64 variantInteger(const QVariant& v, const QString& what) {
    if (isNullValue(v)) return 0;
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: return qRound64(v.toDouble());
    case QMetaType::QString: {
        const QString s = v.toString().trimmed();
        bool ok = false;
        const qint64 i = s.toLongLong(&ok);
        if (ok) return i;
        const double d = s.toDouble(&ok);
        if (ok) return qRound64(d);
        throw EDatabaseError(QStringLiteral("'%1' is not a valid integer value for %2").arg(s, what));
    }
    default: {
        bool ok = false;
        const qint64 i = v.toLongLong(&ok);
        if (!ok) throw EDatabaseError(QStringLiteral("%1 is not an integer").arg(what));
        return i;
    }
    }
}

double variantFloat(const QVariant& v, const QString& what) {
    if (isNullValue(v)) return 0.0;
    bool ok = false;
    const double d = v.typeId() == QMetaType::QString ? v.toString().trimmed().toDouble(&ok) : v.toDouble(&ok);
    if (!ok) throw EDatabaseError(QStringLiteral("'%1' is not a valid floating point value for %2").arg(v.toString(), what));
    return d;
}

QDateTime variantDateTime(const QVariant& v, const QString& what) {
    if (isNullValue(v)) return QDateTime();
    if (v.typeId() == QMetaType::QDateTime) return v.toDateTime();
    if (v.typeId() == QMetaType::QDate) return v.toDate().startOfDay();
    const QDateTime dt = parseDateTime(v.toString());
    if (!dt.isValid()) throw EDatabaseError(QStringLiteral("'%1' is not a valid date and time for %2").arg(v.toString(), what));
    return dt;
}

TFieldType typeOfMeta(int typeId) {
    switch (typeId) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool: return ftInteger;
    case QMetaType::Double:
    case QMetaType::Float: return ftFloat;
    case QMetaType::QDate:
    case QMetaType::QDateTime: return ftDateTime;
    default: return ftString;
    }
}

int compareValues(const QVariant& a, const QVariant& b) {
    const bool an = isNullValue(a), bn = isNullValue(b);
    if (an || bn) return an == bn ? 0 : (an ? -1 : 1);
    const int ta = a.typeId(), tb = b.typeId();
    const auto numeric = [](int t) {
        return t == QMetaType::LongLong || t == QMetaType::Double || t == QMetaType::Int;
    };
    if (numeric(ta) && numeric(tb)) {
        const double x = a.toDouble(), y = b.toDouble();
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    if (ta == QMetaType::QDateTime && tb == QMetaType::QDateTime) {
        const QDateTime x = a.toDateTime(), y = b.toDateTime();
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    return QString::compare(variantText(a), variantText(b));
}

}  // namespace

// ---------------------------------------------------------------- TStrings

void TStrings::Clear() {
    lines_.clear();
    if (owner_) owner_->textChanged();
}

void TStrings::Add(const QString& line) {
    lines_.append(line);
    if (owner_) owner_->textChanged();
}

void TStrings::SetText(const QString& text) {
    lines_ = text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    for (QString& l : lines_)
        if (l.endsWith(QLatin1Char('\r'))) l.chop(1);
    if (owner_) owner_->textChanged();
}

// ---------------------------------------------------------------- TParam

void TParam::SetAsString(const QString& v) {
    DataType = ftString;
    value_ = v;
    bound_ = true;
}
void TParam::SetAsInteger(qint64 v) {
    DataType = ftInteger;
    value_ = v;
    bound_ = true;
}
void TParam::SetAsFloat(double v) {
    DataType = ftFloat;
    value_ = v;
    bound_ = true;
}
void TParam::SetAsDate(const QDate& v) {
    DataType = ftDate;
    value_ = v.isValid() ? QVariant(v.startOfDay()) : QVariant();
    bound_ = true;
}
void TParam::SetAsDate(const QDateTime& v) { SetAsDate(v.date()); }
void TParam::SetAsDateTime(const QDateTime& v) {
    DataType = ftDateTime;
    value_ = v.isValid() ? QVariant(v) : QVariant();
    bound_ = true;
}
void TParam::SetValue(const QVariant& v) {
    if (DataType == ftUnknown) DataType = isNullValue(v) ? ftVariant : typeOfMeta(v.typeId());
    value_ = v.typeId() == QMetaType::QDate ? QVariant(v.toDate().startOfDay()) : v;
    bound_ = true;
}
void TParam::Clear() {
    value_ = QVariant();
    bound_ = false;
}
QString TParam::AsString() const { return variantText(value_); }
qint64 TParam::AsInteger() const { return variantInteger(value_, QStringLiteral("parameter ") + Name); }
double TParam::AsFloat() const { return variantFloat(value_, QStringLiteral("parameter ") + Name); }
QDateTime TParam::AsDateTime() const { return variantDateTime(value_, QStringLiteral("parameter ") + Name); }
bool TParam::IsNull() const { return normalizeWritten(value_).isNull(); }

// ---------------------------------------------------------------- TParams

TParam& TParams::CreateParam(TFieldType type, const QString& name, TParamType dir) {
    auto p = std::make_unique<TParam>();
    p->Name = name;
    p->DataType = type;
    p->ParamType = dir;
    items_.push_back(std::move(p));
    return *items_.back();
}

TParam& TParams::Items(int i) {
    if (i < 0 || i >= Count())
        throw EDatabaseError(QStringLiteral("List index out of bounds (%1)").arg(i));
    return *items_[size_t(i)];
}

TParam* TParams::FindParam(const QString& name) {
    for (auto& p : items_)
        if (p->Name.compare(name, Qt::CaseInsensitive) == 0) return p.get();
    return nullptr;
}

TParam& TParams::ParamByName(const QString& name) {
    if (TParam* p = FindParam(name)) return *p;
    throw EDatabaseError(QStringLiteral("Parameter '%1' not found").arg(name));
}

// ---------------------------------------------------------------- TField

QString TField::FieldName() const { return ds_->fieldNames_.at(index_); }
TFieldType TField::DataType() const { return ds_->fieldTypes_.at(index_); }
QVariant TField::Value() const { return ds_->currentValue(index_); }
bool TField::IsNull() const { return isNullValue(Value()); }
QString TField::AsString() const { return variantText(Value()); }
qint64 TField::AsInteger() const { return variantInteger(Value(), QStringLiteral("field ") + FieldName()); }
double TField::AsFloat() const { return variantFloat(Value(), QStringLiteral("field ") + FieldName()); }
QDateTime TField::AsDateTime() const { return variantDateTime(Value(), QStringLiteral("field ") + FieldName()); }
void TField::SetAsString(const QString& v) { ds_->setFieldValue(index_, v); }
void TField::SetAsInteger(qint64 v) { ds_->setFieldValue(index_, v); }
void TField::SetAsFloat(double v) { ds_->setFieldValue(index_, v); }
void TField::SetAsDateTime(const QDateTime& v) { ds_->setFieldValue(index_, v.isValid() ? QVariant(v) : QVariant()); }
void TField::SetValue(const QVariant& v) { ds_->setFieldValue(index_, v); }
void TField::Clear() { ds_->setFieldValue(index_, QVariant()); }

// ---------------------------------------------------------------- TCustomMidasDataBase

TCustomMidasDataBase::TCustomMidasDataBase(const QString& connectionName) : name_(connectionName) {}

namespace {
struct TxState {
    bool active = false;
    // What datasets do once the transaction's changes are in the database.
    std::vector<std::function<void()>> onCommit;
};
std::map<QString, TxState>& txStates() {
    static std::map<QString, TxState> states;
    return states;
}
}  // namespace

TCustomMidasDataBase& TCustomMidasDataBase::ByName(const QString& connectionName) {
    static std::map<QString, std::unique_ptr<TCustomMidasDataBase>> instances;
    auto& slot = instances[connectionName];
    if (!slot) slot = std::make_unique<TCustomMidasDataBase>(connectionName);
    return *slot;
}

QSqlDatabase TCustomMidasDataBase::Database() const {
    if (!QSqlDatabase::contains(name_))
        throw EDatabaseError(QStringLiteral("The database connection '%1' does not exist; the host must open it before any screen runs").arg(name_));
    QSqlDatabase db = QSqlDatabase::database(name_, false);
    if (!db.isOpen())
        throw EDatabaseError(QStringLiteral("The database connection '%1' is not open").arg(name_));
    // A connection the host opened with plain Qt calls gets what ours get.
    tarvin::db::prepareConnection(db);
    return db;
}

tarvin::sql::Dialect TCustomMidasDataBase::Dialect() const { return tarvin::db::dialectOf(Database()); }

bool TCustomMidasDataBase::InTransaction() const {
    auto it = txStates().find(name_);
    if (it == txStates().end() || !it->second.active) return false;
    // A connection closed and reopened under the same name starts afresh.
    if (!QSqlDatabase::contains(name_) || !QSqlDatabase::database(name_, false).isOpen()) {
        it->second.active = false;
        return false;
    }
    return true;
}

void TCustomMidasDataBase::StartTransaction() {
    QSqlDatabase db = Database();
    if (InTransaction()) throw EDatabaseError(QStringLiteral("A transaction is already active on '%1'").arg(name_));
    bool ok;
    QString err;
    if (tarvin::db::dialectOf(db) == Dialect::SQLite) {
        // Take the write lock at once: two operators' transactions then queue
        // instead of failing on a lock upgrade half-way.
        QSqlQuery q(db);
        ok = q.exec(QStringLiteral("BEGIN IMMEDIATE"));
        err = q.lastError().text();
    } else {
        ok = db.transaction();
        err = db.lastError().text();
    }
    if (!ok) throw EDatabaseError(QStringLiteral("Cannot start a transaction: %1").arg(err));
    txStates()[name_].active = true;
}

void TCustomMidasDataBase::Commit() {
    QSqlDatabase db = Database();
    if (!InTransaction()) throw EDatabaseError(QStringLiteral("No transaction is active on '%1'").arg(name_));
    bool ok;
    QString err;
    if (tarvin::db::dialectOf(db) == Dialect::SQLite) {
        QSqlQuery q(db);
        ok = q.exec(QStringLiteral("COMMIT"));
        err = q.lastError().text();
    } else {
        ok = db.commit();
        err = db.lastError().text();
    }
    if (!ok) throw EDatabaseError(QStringLiteral("Commit failed: %1").arg(err));
    TxState& state = txStates()[name_];
    state.active = false;
    const auto committed = std::exchange(state.onCommit, {});
    for (const auto& done : committed) done();
}

void TCustomMidasDataBase::OnCommit(std::function<void()> done) {
    if (!InTransaction()) return done();
    txStates()[name_].onCommit.push_back(std::move(done));
}

void TCustomMidasDataBase::Rollback() {
    QSqlDatabase db = Database();
    if (!InTransaction()) return;
    txStates()[name_].active = false;
    txStates()[name_].onCommit.clear();
    bool ok;
    QString err;
    if (tarvin::db::dialectOf(db) == Dialect::SQLite) {
        QSqlQuery q(db);
        ok = q.exec(QStringLiteral("ROLLBACK"));
        err = q.lastError().text();
    } else {
        ok = db.rollback();
        err = db.lastError().text();
    }
    if (!ok) throw EDatabaseError(QStringLiteral("Rollback failed: %1").arg(err));
}

// ---------------------------------------------------------------- TMidasQuery

TMidasQuery::TMidasQuery(QObject* parent, const QString& name) : QObject(parent) {
    sql_.owner_ = this;
    if (!name.isEmpty()) setObjectName(name);
}

TMidasQuery::~TMidasQuery() { sql_.owner_ = nullptr; }

TCustomMidasDataBase& TMidasQuery::DataBase() { return TCustomMidasDataBase::ByName(connectionName_); }

QString TMidasQuery::describe() const {
    return objectName().isEmpty() ? QStringLiteral("query") : objectName();
}

void TMidasQuery::textChanged() {
    // Changing the text closes the query and rebuilds the parameter list
    // from it, keeping the values of parameters whose names remain.
    if (Active()) Close();
    const QStringList names = tarvin::sql::parameterNames(sql_.Text());
    TParams fresh;
    for (const QString& n : names) {
        TParam& p = fresh.CreateParam(ftUnknown, n, ptInput);
        if (TParam* old = params_.FindParam(n)) {
            p.DataType = old->DataType;
            p.ParamType = old->ParamType;
            p.value_ = old->value_;
            p.bound_ = old->bound_;
        }
    }
    params_ = std::move(fresh);
}

void TMidasQuery::requireActive(const char* op) const {
    if (!Active())
        throw EDatabaseError(QStringLiteral("%1: Cannot perform %2 on a closed dataset").arg(describe(), QLatin1String(op)));
}

void TMidasQuery::requireBrowse(const char* op) {
    requireActive(op);
    if (state_ == dsEdit || state_ == dsInsert) Post();
}

void TMidasQuery::Open() {
    if (Active()) return;
    run(true);
}

void TMidasQuery::Close() {
    if (!Active() && fieldNames_.isEmpty()) return;
    state_ = dsInactive;
    rows_.clear();
    deleted_.clear();
    fieldNames_.clear();
    fieldTypes_.clear();
    current_ = -1;
    editRow_ = -1;
    eof_ = bof_ = true;
    emit rowsReset();
    emit stateChanged();
    emit currentChanged(-1);
}

void TMidasQuery::ExecSQL() {
    if (Active()) Close();
    run(false);
}

void TMidasQuery::Refresh() {
    requireBrowse("Refresh");
    const int keep = current_;
    state_ = dsInactive;
    run(true);
    if (!rows_.isEmpty()) setCurrent(std::clamp(keep, 0, int(rows_.size()) - 1));
}

namespace {

// SQLite compiles a text each time it is prepared. The texts a session runs
// again and again (a scratch query's few texts, an apply's inserts, the
// clock) keep their compiled statements, per connection; a statement is
// reset before it goes back, so a kept one holds no lock.
class CompiledText {
public:
    CompiledText(const QString& connection, const QSqlDatabase& db, const QString& text) : text_(text) {
        Cache& cache = caches()[connection];
        if (cache.driver != db.driver()) {  // another connection under the name
            cache.byText.clear();
            cache.driver = db.driver();
        }
        cache_ = &cache;
    }
    bool TakeInto(QSqlQuery& q) {
        auto node = cache_->byText.extract(text_);
        if (node.empty()) return false;
        q = std::move(node.mapped());
        return true;
    }
    void GiveBack(QSqlQuery& q) {
        q.finish();
        if (cache_->byText.size() >= kKept) cache_->byText.clear();
        cache_->byText.insert_or_assign(text_, std::move(q));
    }

private:
    static constexpr std::size_t kKept = 256;
    struct Cache {
        const QSqlDriver* driver = nullptr;
        std::unordered_map<QString, QSqlQuery> byText;
    };
    static std::map<QString, Cache>& caches() {
        static std::map<QString, Cache> all;
        return all;
    }
    friend void ::ForgetCompiledStatements(const QString& connectionName);
    Cache* cache_;
    QString text_;
};

}  // namespace

void ForgetCompiledStatements(const QString& connectionName) { CompiledText::caches().erase(connectionName); }

void TMidasQuery::run(bool expectRows) {
    const QString text = sql_.Text();
    if (text.trimmed().isEmpty())
        throw EDatabaseError(QStringLiteral("%1: No SQL statement available").arg(describe()));
    TCustomMidasDataBase& dbase = DataBase();
    QSqlDatabase db = dbase.Database();
    const Dialect dialect = tarvin::db::dialectOf(db);

    Translated t;
    try {
        t = tarvin::sql::translate(text, dialect);
    } catch (const tarvin::sql::TranslateError& e) {
        throw EDatabaseError(QStringLiteral("%1: %2").arg(describe(), e.message()));
    }

    if (t.kind == Translated::Kind::Commit) {
        lastEngineSql_ = QStringLiteral("COMMIT");
        if (dbase.InTransaction()) dbase.Commit();
        rowsAffected_ = 0;
        return;
    }

    // Values at each parameter place; a parameter never assigned is null.
    QVariantList values;
    values.reserve(t.params.size());
    for (const QString& name : t.params) {
        TParam* p = params_.FindParam(name);
        if (!p) throw EDatabaseError(QStringLiteral("%1: Parameter '%2' not found").arg(describe(), name));
        values << (p->ParamType == ptOutput ? QVariant() : normalizeWritten(p->value_));
    }

    QSqlQuery q(db);
    q.setForwardOnly(true);
    bool ok = false;
    // Given back to the cache when the run is over (SQLite).
    std::unique_ptr<CompiledText> reuse;
    if (dialect == Dialect::PostgreSQL) {
        QStringList lits;
        lits.reserve(values.size());
        for (const QVariant& v : values) lits << tarvin::sql::literal(v, dialect);
        lastEngineSql_ = t.withLiterals(lits);
        ok = q.exec(lastEngineSql_);
    } else {
        if (dialect == Dialect::SQLite) {
            lastEngineSql_ = t.withPlaceholders(QStringLiteral("?"));
        } else {
            QStringList names;
            for (const QString& n : t.params) names << QLatin1Char(':') + n;
            lastEngineSql_ = t.withLiterals(names);
        }
        const auto bindAndRun = [&] {
            for (int i = 0; i < values.size(); ++i) {
                QVariant v = values.at(i);
                // SQLite keeps date-times in one canonical text form.
                if (dialect == Dialect::SQLite && v.typeId() == QMetaType::QDateTime)
                    v = v.toDateTime().toString(kDateTimeFormat);
                if (dialect == Dialect::SQLite)
                    q.bindValue(i, v);
                else
                    q.bindValue(QLatin1Char(':') + t.params.at(i), v);
            }
            return q.exec();
        };
        // A text with its values written in (an account between quotes) is
        // seldom run twice: kept, such texts would push out the ones that are.
        const bool repeated = !t.params.isEmpty() || !lastEngineSql_.contains(QLatin1Char('\''));
        if (dialect == Dialect::SQLite && repeated) {
            reuse = std::make_unique<CompiledText>(connectionName_, db, lastEngineSql_);
            // A compiled statement that no longer runs (its connection was
            // closed and opened again) is compiled afresh, once.
            if (reuse->TakeInto(q)) ok = bindAndRun();
            if (!ok) {
                q = QSqlQuery(db);
                q.setForwardOnly(true);
                ok = q.prepare(lastEngineSql_) && bindAndRun();
            }
            if (!ok) reuse.reset();
        } else {
            ok = q.prepare(lastEngineSql_) && bindAndRun();
        }
    }
    const auto giveBack = qScopeGuard([&] {
        if (reuse) reuse->GiveBack(q);
    });
    if (!ok) {
        const QString err = q.lastError().text();
        throw EDatabaseError(QStringLiteral("%1: %2\nSQL: %3").arg(describe(), err, lastEngineSql_));
    }

    if (t.kind == Translated::Kind::Call) {
        if (q.next()) {
            for (int i = 0; i < t.outputs.size(); ++i) {
                if (TParam* p = params_.FindParam(t.outputs.at(i))) {
                    p->value_ = normalizeFetched(q.value(i));
                    p->bound_ = true;
                }
            }
        }
        q.finish();
        rowsAffected_ = 0;
        return;
    }
    if (!expectRows || t.kind == Translated::Kind::Statement) {
        rowsAffected_ = q.numRowsAffected();
        q.finish();
        if (expectRows)
            throw EDatabaseError(QStringLiteral("%1: The statement returns no rows; use ExecSQL").arg(describe()));
        return;
    }

    // Fetch every row; field names as Oracle reports them (upper case), a
    // repeated name gets a suffix as the toolkit did.
    const QSqlRecord rec = q.record();
    QStringList names;
    QVector<TFieldType> types;
    for (int i = 0; i < rec.count(); ++i) {
        QString n = rec.fieldName(i).toUpper();
        const int dot = n.lastIndexOf(QLatin1Char('.'));
        if (dot >= 0) n = n.mid(dot + 1);
        QString unique = n;
        for (int k = 1; names.contains(unique); ++k) unique = QStringLiteral("%1_%2").arg(n).arg(k);
        names << unique;
        types << typeOfMeta(rec.field(i).metaType().id());
    }
    QVector<Row> rows;
    while (q.next()) {
        Row r;
        r.values.resize(names.size());
        for (int i = 0; i < names.size(); ++i) r.values[i] = normalizeFetched(q.value(i));
        r.original = r.values;
        r.id = nextId_++;
        rows.append(std::move(r));
    }
    q.finish();
    // Types the driver left open (SQLite expressions) are read off the values.
    for (int c = 0; c < types.size(); ++c) {
        if (types[c] != ftString) continue;
        for (const Row& r : rows) {
            const QVariant& v = r.values[c];
            if (isNullValue(v)) continue;
            types[c] = typeOfMeta(v.typeId());
            break;
        }
    }
    fieldNames_ = names;
    fieldTypes_ = types;
    rows_ = std::move(rows);
    deleted_.clear();
    state_ = dsBrowse;
    sortRows();
    current_ = rows_.isEmpty() ? -1 : 0;
    eof_ = bof_ = true;
    if (!rows_.isEmpty()) eof_ = false;
    emit rowsReset();
    emit stateChanged();
    emit currentChanged(current_);
}

void TMidasQuery::DisableControls() {
    if (controlsDisabled_++ == 0) blockSignals(true);
}

void TMidasQuery::EnableControls() {
    if (controlsDisabled_ == 0 || --controlsDisabled_ > 0) return;
    blockSignals(false);
    emit rowsReset();
    emit stateChanged();
    emit currentChanged(current_);
}

void TMidasQuery::SetIndexFieldNames(const QString& names) {
    indexFieldNames_ = names;
    if (Active()) {
        const qint64 id = current_ >= 0 ? rows_[current_].id : 0;
        sortRows();
        emit rowsReset();
        if (id) GotoBookmark(id);
    }
}

void TMidasQuery::sortRows() {
    if (indexFieldNames_.trimmed().isEmpty()) return;
    QVector<int> cols;
    for (const QString& f : indexFieldNames_.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int c = FindFieldIndex(f.trimmed());
        if (c < 0) throw EDatabaseError(QStringLiteral("%1: Field '%2' not found").arg(describe(), f.trimmed()));
        cols << c;
    }
    std::stable_sort(rows_.begin(), rows_.end(), [&](const Row& a, const Row& b) {
        for (int c : cols) {
            const int r = compareValues(a.values[c], b.values[c]);
            if (r) return r < 0;
        }
        return false;
    });
}

void TMidasQuery::setCurrent(int row) {
    if (row == current_) {
        eof_ = bof_ = rows_.isEmpty();
        return;
    }
    current_ = row;
    eof_ = bof_ = rows_.isEmpty();
    emit currentChanged(current_);
}

void TMidasQuery::First() {
    requireBrowse("First");
    setCurrent(rows_.isEmpty() ? -1 : 0);
    bof_ = true;
    eof_ = rows_.isEmpty();
}

void TMidasQuery::Last() {
    requireBrowse("Last");
    setCurrent(rows_.isEmpty() ? -1 : int(rows_.size()) - 1);
    eof_ = true;
    bof_ = rows_.isEmpty();
}

void TMidasQuery::Next() {
    requireBrowse("Next");
    if (rows_.isEmpty() || current_ >= rows_.size() - 1) {
        eof_ = true;
        return;
    }
    setCurrent(current_ + 1);
}

void TMidasQuery::Prior() {
    requireBrowse("Prior");
    if (rows_.isEmpty() || current_ <= 0) {
        bof_ = true;
        return;
    }
    setCurrent(current_ - 1);
}

bool TMidasQuery::Eof() const { return !Active() || eof_ || rows_.isEmpty(); }
bool TMidasQuery::Bof() const { return !Active() || bof_ || rows_.isEmpty(); }
bool TMidasQuery::IsEmpty() const { return !Active() || rows_.isEmpty(); }
int TMidasQuery::RecordCount() const { return Active() ? int(rows_.size()) : 0; }
int TMidasQuery::RecNo() const { return current_ + 1; }

void TMidasQuery::SetRecNo(int recNo) {
    requireBrowse("RecNo");
    if (recNo < 1 || recNo > rows_.size()) return;
    setCurrent(recNo - 1);
}

bool TMidasQuery::Locate(const QString& keyFields, const QVariantList& values, int options) {
    requireBrowse("Locate");
    const QStringList keys = keyFields.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QVector<int> cols;
    for (const QString& k : keys) {
        const int c = FindFieldIndex(k.trimmed());
        if (c < 0) throw EDatabaseError(QStringLiteral("%1: Field '%2' not found").arg(describe(), k.trimmed()));
        cols << c;
    }
    const Qt::CaseSensitivity cs = (options & loCaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
    for (int r = 0; r < rows_.size(); ++r) {
        bool match = true;
        for (int i = 0; i < cols.size() && match; ++i) {
            const QVariant& have = rows_[r].values[cols[i]];
            const QVariant want = values.value(i);
            if (isNullValue(want) || (want.typeId() == QMetaType::QString && want.toString().isEmpty())) {
                match = isNullValue(have);
                continue;
            }
            const QString h = variantText(have), w = variantText(want);
            // A partial key applies to the last field only, as the toolkit does.
            if ((options & loPartialKey) && i == cols.size() - 1)
                match = h.startsWith(w, cs);
            else
                match = h.compare(w, cs) == 0;
        }
        if (match) {
            setCurrent(r);
            return true;
        }
    }
    return false;
}

TBookmark TMidasQuery::GetBookmark() const {
    if (!Active() || current_ < 0) return 0;
    return rows_[current_].id;
}

bool TMidasQuery::BookmarkValid(TBookmark bm) const {
    if (!Active() || bm == 0) return false;
    return std::any_of(rows_.begin(), rows_.end(), [bm](const Row& r) { return r.id == bm; });
}

void TMidasQuery::GotoBookmark(TBookmark bm) {
    requireBrowse("GotoBookmark");
    for (int r = 0; r < rows_.size(); ++r)
        if (rows_[r].id == bm) {
            setCurrent(r);
            return;
        }
    throw EDatabaseError(QStringLiteral("%1: Record not found").arg(describe()));
}

int TMidasQuery::FindFieldIndex(const QString& name) const {
    for (int i = 0; i < fieldNames_.size(); ++i)
        if (fieldNames_[i].compare(name, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

TField TMidasQuery::Fields(int i) {
    requireActive("Fields");
    if (i < 0 || i >= fieldNames_.size())
        throw EDatabaseError(QStringLiteral("%1: Field index out of range (%2)").arg(describe()).arg(i));
    return TField(this, i);
}

TField TMidasQuery::FieldByName(const QString& name) {
    requireActive("FieldByName");
    const int i = FindFieldIndex(name);
    if (i < 0) throw EDatabaseError(QStringLiteral("%1: Field '%2' not found").arg(describe(), name));
    return TField(this, i);
}

QVariant TMidasQuery::valueAt(int row, int col) const {
    if (row < 0 || row >= rows_.size() || col < 0 || col >= fieldNames_.size()) return {};
    return rows_[row].values[col];
}

QVariant TMidasQuery::currentValue(int col) const {
    if (current_ < 0 || current_ >= rows_.size()) return {};
    return rows_[current_].values[col];
}

void TMidasQuery::checkFieldWrite(int col) const {
    if (state_ != dsEdit && state_ != dsInsert)
        throw EDatabaseError(QStringLiteral("%1: Dataset not in edit or insert mode (field %2)").arg(describe(), fieldNames_.value(col)));
}

void TMidasQuery::setFieldValue(int col, const QVariant& v) {
    checkFieldWrite(col);
    rows_[current_].values[col] = normalizeWritten(v);
    emit rowChanged(current_);
}

void TMidasQuery::Append() {
    requireBrowse("Append");
    returnTo_ = GetBookmark();
    Row r;
    r.values.resize(fieldNames_.size());
    r.id = nextId_++;
    r.status = Row::Inserted;
    rows_.append(r);
    editRow_ = int(rows_.size()) - 1;
    emit rowInserted(editRow_);
    setCurrent(editRow_);
    state_ = dsInsert;
    emit stateChanged();
}

void TMidasQuery::Insert() {
    requireBrowse("Insert");
    returnTo_ = GetBookmark();
    Row r;
    r.values.resize(fieldNames_.size());
    r.id = nextId_++;
    r.status = Row::Inserted;
    const int at = current_ < 0 ? 0 : current_;
    rows_.insert(at, r);
    editRow_ = at;
    emit rowInserted(at);
    current_ = -1;
    setCurrent(at);
    state_ = dsInsert;
    emit stateChanged();
}

void TMidasQuery::Edit() {
    requireActive("Edit");
    if (state_ == dsEdit || state_ == dsInsert) return;
    if (rows_.isEmpty()) {
        Append();
        return;
    }
    editBuffer_ = rows_[current_];
    editRow_ = current_;
    state_ = dsEdit;
    emit stateChanged();
}

void TMidasQuery::Post() {
    requireActive("Post");
    if (state_ == dsEdit) {
        Row& r = rows_[editRow_];
        if (r.status == Row::Unchanged && r.values != editBuffer_.values) r.status = Row::Modified;
    }
    if (state_ == dsEdit || state_ == dsInsert) {
        state_ = dsBrowse;
        editRow_ = -1;
        emit stateChanged();
    }
}

void TMidasQuery::Cancel() {
    if (state_ == dsEdit) {
        rows_[editRow_].values = editBuffer_.values;
        emit rowChanged(editRow_);
    } else if (state_ == dsInsert) {
        const int at = editRow_;
        rows_.removeAt(at);
        emit rowRemoved(at);
        int back = std::min(at, int(rows_.size()) - 1);
        for (int r = 0; r < rows_.size(); ++r)
            if (rows_[r].id == returnTo_) back = r;
        current_ = -1;
        setCurrent(rows_.isEmpty() ? -1 : back);
    } else {
        return;
    }
    state_ = dsBrowse;
    editRow_ = -1;
    emit stateChanged();
}

void TMidasQuery::Delete() {
    requireActive("Delete");
    if (state_ == dsInsert) {
        Cancel();
        return;
    }
    if (state_ == dsEdit) Cancel();
    if (rows_.isEmpty()) throw EDatabaseError(QStringLiteral("%1: Cannot perform this operation on an empty dataset").arg(describe()));
    const int at = current_;
    Row r = rows_.takeAt(at);
    if (r.status != Row::Inserted) deleted_.append(std::move(r));
    emit rowRemoved(at);
    current_ = -1;
    setCurrent(rows_.isEmpty() ? -1 : std::min(at, int(rows_.size()) - 1));
}

int TMidasQuery::GetChangeCount() const {
    int n = int(deleted_.size());
    for (const Row& r : rows_)
        if (r.status != Row::Unchanged) ++n;
    return n;
}

void TMidasQuery::CancelUpdates() {
    if (!Active()) return;
    if (state_ == dsEdit || state_ == dsInsert) Cancel();
    QVector<Row> kept;
    for (Row& r : rows_) {
        if (r.status == Row::Inserted) continue;
        r.values = r.original;
        r.status = Row::Unchanged;
        kept.append(r);
    }
    for (Row& r : deleted_) {
        r.values = r.original;
        r.status = Row::Unchanged;
        kept.append(r);
    }
    deleted_.clear();
    std::stable_sort(kept.begin(), kept.end(), [](const Row& a, const Row& b) { return a.id < b.id; });
    rows_ = std::move(kept);
    sortRows();
    emit rowsReset();
    current_ = -1;
    setCurrent(rows_.isEmpty() ? -1 : 0);
}

int TMidasQuery::ApplyUpdates(int maxErrors) {
    requireBrowse("ApplyUpdates");
    if (GetChangeCount() == 0) return 0;
    if (updateTable_.isEmpty() || keyFields_.isEmpty())
        throw EDatabaseError(QStringLiteral("%1: No update table and key fields are declared").arg(describe()));
    TCustomMidasDataBase& dbase = DataBase();
    QSqlDatabase db = dbase.Database();

    // Only the columns the update table really has are written back.
    const QSqlRecord tableRec = db.record(tarvin::db::dialectOf(db) == Dialect::PostgreSQL ? updateTable_.toLower() : updateTable_);
    QVector<int> cols;
    for (int c = 0; c < fieldNames_.size(); ++c)
        for (int k = 0; k < tableRec.count(); ++k)
            if (tableRec.fieldName(k).compare(fieldNames_[c], Qt::CaseInsensitive) == 0) {
                cols << c;
                break;
            }
    QVector<int> keyCols;
    for (const QString& k : keyFields_) {
        const int c = FindFieldIndex(k);
        if (c < 0) throw EDatabaseError(QStringLiteral("%1: Key field '%2' not found").arg(describe(), k));
        keyCols << c;
    }

    TMidasQuery stmt(nullptr, describe() + QStringLiteral(" update"));
    stmt.SetDatabaseName(connectionName_);
    const auto keyWhere = [&](const Row& r, int& n) {
        QStringList parts;
        for (int c : keyCols) {
            if (isNullValue(r.original.value(c)))
                parts << fieldNames_[c] + QStringLiteral(" IS NULL");
            else
                parts << QStringLiteral("%1=:K%2").arg(fieldNames_[c]).arg(n++);
        }
        return parts.join(QStringLiteral(" AND "));
    };
    const auto bindKeys = [&](const Row& r) {
        int n = 0;
        for (int c : keyCols)
            if (!isNullValue(r.original.value(c))) stmt.ParamByName(QStringLiteral("K%1").arg(n++)).SetValue(r.original.value(c));
    };

    const bool ownTx = !dbase.InTransaction();
    if (ownTx) dbase.StartTransaction();
    int errors = 0;
    QVector<qint64> applied;
    QStringList messages;
    const auto attempt = [&](auto&& prepare, qint64 id, bool mustFind = true) {
        try {
            prepare();
            stmt.ExecSQL();
            // As the row was read, by its key: gone or changed under its key
            // by someone else, it is not silently skipped.
            if (mustFind && stmt.RowsAffected() == 0)
                throw EDatabaseError(QStringLiteral("%1: Record not found or changed by another user").arg(describe()));
            applied << id;
        } catch (const EDatabaseError& e) {
            ++errors;
            messages << e.message();
        }
    };
    for (const Row& r : deleted_) {
        attempt([&] {
            int n = 0;
            stmt.SQL().SetText(QStringLiteral("DELETE FROM %1 WHERE %2").arg(updateTable_, keyWhere(r, n)));
            bindKeys(r);
        }, r.id);
    }
    for (const Row& r : rows_) {
        if (r.status == Row::Inserted) {
            attempt([&] {
                QStringList names, places;
                for (int c : cols) {
                    if (isNullValue(r.values[c])) continue;
                    names << fieldNames_[c];
                    places << QStringLiteral(":V%1").arg(c);
                }
                stmt.SQL().SetText(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                       .arg(updateTable_, names.join(QLatin1Char(',')), places.join(QLatin1Char(','))));
                for (int c : cols)
                    if (!isNullValue(r.values[c])) stmt.ParamByName(QStringLiteral("V%1").arg(c)).SetValue(r.values[c]);
            }, r.id);
        } else if (r.status == Row::Modified) {
            attempt([&] {
                QStringList sets;
                for (int c : cols)
                    if (compareValues(r.values[c], r.original[c]) != 0 || isNullValue(r.values[c]) != isNullValue(r.original[c]))
                        sets << QStringLiteral("%1=:V%2").arg(fieldNames_[c]).arg(c);
                if (sets.isEmpty()) sets << QStringLiteral("%1=%1").arg(fieldNames_[keyCols.first()]);
                int n = 0;
                stmt.SQL().SetText(QStringLiteral("UPDATE %1 SET %2 WHERE %3").arg(updateTable_, sets.join(QLatin1Char(',')), keyWhere(r, n)));
                for (int c : cols)
                    if (TParam* p = stmt.Params().FindParam(QStringLiteral("V%1").arg(c))) p->SetValue(r.values[c]);
                bindKeys(r);
            }, r.id);
        }
    }
    const bool tooMany = maxErrors >= 0 && errors > maxErrors;
    if (ownTx) {
        if (tooMany) dbase.Rollback();
        else dbase.Commit();
    } else if (tooMany) {
        throw EDatabaseError(QStringLiteral("%1: %2 update(s) failed: %3").arg(describe()).arg(errors).arg(messages.join(QLatin1Char('\n'))));
    }
    if (!tooMany) {
        // Applied changes leave the change log (at the caller's commit);
        // failed ones stay for a retry.
        QHash<qint64, QVector<QVariant>> written;
        for (const Row& r : rows_)
            if (applied.contains(r.id)) written.insert(r.id, r.values);
        dbase.OnCommit([self = QPointer<TMidasQuery>(this), applied, written] {
            if (!self) return;
            QVector<Row> stillDeleted;
            for (Row& r : self->deleted_)
                if (!applied.contains(r.id)) stillDeleted.append(r);
            self->deleted_ = std::move(stillDeleted);
            for (Row& r : self->rows_)
                if (const auto it = written.constFind(r.id); it != written.cend()) {
                    r.original = *it;
                    r.status = r.values == *it ? Row::Unchanged : Row::Modified;
                }
        });
    }
    return errors;
}

void PrepareSql(TMidasQuery* query, const QString& text, TSqlParams params) {
    query->Close();
    query->SQL().SetText(text);
    for (const auto& [name, value] : params) {
        TParam& p = query->ParamByName(QLatin1String(name));
        // The type follows the value given now, not one bound before.
        p.DataType = ftUnknown;
        p.SetValue(value);
    }
}

void OpenSql(TMidasQuery* query, const QString& text, TSqlParams params) {
    PrepareSql(query, text, params);
    query->Open();
}

void ExecSql(TMidasQuery* query, const QString& text, TSqlParams params) {
    PrepareSql(query, text, params);
    query->ExecSQL();
}
