// What the dialect bridge costs per statement: translating a text for
// SQLite against executing the translated text on SQLite (the reference
// schema, no customer rows: the cheapest execution there is). Prints one
// line with the ratio.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <cstdio>

#include "data/Connection.h"
#include "Schema.h"
#include "data/SqlDialect.h"

namespace {

// Texts of the module, from the plain look-up to the longest screening text.
const char* const kTexts[] = {
    "select * from Y_KHDA\nWHERE HH=:HH",
    "select CDBH,KHBH,HM,YDDZ,DQYWX,LASTYWXMC,DQYWXMC,CZY,C.XINGMING \nfrom Z_DQGW A,Z_LCJD B,Z_XTCZY C\nwhere A.DQYWX = B.YWXDM\n"
    "and A.CZY = C.DM(+)",
    "select A.*,c.mc khlxmc,D.MC DYDJMC,\nto_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh \nfrom e_Jcgzjl A,w_khlx c,W_DYDJ D\nwhere \n"
    "a.khlx=c.dm(+)\nAND A.DYDJ=D.DM(+)\nand a.jcph=:sJcph\n",
    "SELECT djm, djm||' | '||djmc djmc\n FROM b_djb",
    "select to_char(sysdate,:format) from dual",
    " select * from   (select distinct A.*,B.NY,jc_pjdlbd(A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A,B_DLTZXX  B  where A.HH=B.HH(+)) A "
    "WHERE NY=:NY   AND BDL>:BDL AND \n a.Dw=:Dw  and \n 1=1",
    " select distinct a.*, (select llkhbz from b_dltzxx  where hh=a.hh and ny=:ny and sjll>:sjll and rownum=1) llkhbz, (select sjll "
    "from b_dltzxx    where hh=a.hh and ny=:ny and sjll>:sjll and rownum=1) sjll from v_yckhda a,b_dltzxx b where  a.hh=b.hh(+) and "
    "b.ny=:ny  and b.sjll>:sjll  and \n a.Dw=:Dw  and \n 1=1",
    " select a.*,b.cs from v_yckhda a,  (select a.hh,count(*) cs from V_YCKHDA A,A_h_KHSQXX B,A_h_YKKZB C  where A.HH=B.HH(+) and "
    "B.CDBH=C.CDBH  and B.YWDM in ('402','401') and C.SFWYQD='是'  and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where "
    "a.hh=b.hh(+) and b.cs>:cs AND \n a.Dw=:Dw  and \n 1=1",
    " SELECT * FROM V_YCKHDA a   where (nvl(a.scjcrq,sysdate-365)<:jcrqq or a.scjcrq>:jcrqz)  and \n a.Dw=:Dw  and \n 1=1",
    "SELECT DISTINCT C.*,D.HM,D.YDDZ \nFROM e_bjtx C,Y_KHDA D,Z_YWX E\nWHERE \n  C.ZT='未处理'\n AND C.HH = D.HH and c.dw=:dw\n"
    " And exists(select 1 from \n    z_czyygw a1,z_gw b1,z_gwyzn c1 ,\n    z_ywzn d1,z_znyywx e1\n    where a1.czydm = :czydm\n"
    "      and a1.zdm  = c1.gwdm   and  c1.gwdm = b1.dm  and b1.sfyx = 1\n      and c1.zndm = e1.zndm   and  e1.zndm = d1.dm  and d1.sfyx = 1 \n"
    "      and e1.cldm ='40099')\n AND EXISTS(SELECT 1 FROM e_bjxz\n     WHERE czydm = :czydm\n      AND bjdm = c.bjdm \n"
    "      AND sfyx='是')\norder by c.bjdm,c.txrq",
    "Begin :CDBH := GET_CDBH; End;",
};

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    using tarvin::sql::Dialect;
    QTemporaryDir dir;
    QSqlDatabase db = tarvin::db::openConnection(QStringLiteral("sqlite:") + dir.path() + QStringLiteral("/bench.sqlite"),
                                                 QStringLiteral("bench"));
    tarvin::db::createSchema(db);

    constexpr int kRounds = 200;
    const int texts = int(std::size(kTexts));
    QElapsedTimer timer;

    timer.start();
    for (int r = 0; r < kRounds; ++r)
        for (const char* text : kTexts) (void)tarvin::sql::translate(QString::fromUtf8(text), Dialect::SQLite);
    const double translateNs = double(timer.nsecsElapsed()) / (kRounds * texts);

    std::vector<tarvin::sql::Translated> translated;
    for (const char* text : kTexts) translated.push_back(tarvin::sql::translate(QString::fromUtf8(text), Dialect::SQLite));
    timer.restart();
    for (int r = 0; r < kRounds; ++r) {
        for (const tarvin::sql::Translated& t : translated) {
            QSqlQuery q(db);
            if (!q.prepare(t.withPlaceholders())) {
                std::fprintf(stderr, "bench_translate: %s\n", qPrintable(q.lastError().text()));
                return 1;
            }
            for (int i = 0; i < t.params.size(); ++i) q.addBindValue(QStringLiteral("1"));
            if (!q.exec()) {
                std::fprintf(stderr, "bench_translate: %s\n", qPrintable(q.lastError().text()));
                return 1;
            }
            while (q.next()) {
            }
        }
    }
    const double executeNs = double(timer.nsecsElapsed()) / (kRounds * texts);

    std::printf("bench_translate: %d texts x %d rounds: translate %.1f us/text, execute on SQLite (empty schema) %.1f us/text, "
                "ratio translate/execute %.3f\n",
                texts, kRounds, translateNs / 1000.0, executeNs / 1000.0, translateNs / executeNs);
    return 0;
}
