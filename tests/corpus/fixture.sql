-- Data behind the SQL corpus: one supply unit ('0101') seen by the session,
-- its neighbour ('0102') and a closed account, so that every text finds rows
-- and a text that loses its unit, account or join condition finds too many.
-- Plain INSERTs with column lists, valid on SQLite and PostgreSQL; dates in
-- the canonical form 'YYYY-MM-DD HH:MM:SS'. The database clock of the corpus
-- run is 2024-04-15 10:00:00, the billing month '202403'.
--
-- Customers (y_khda):
--   0000000001 王一  unit 0101, high voltage, two sources, breach cases,
--                    expired contract, exchanged meter (case 0000000301)
--   0000000002 李二  unit 0101, the one every common filter selects
--   0000000003 张三  unit 0101, three zero readings, two suspensions
--   0000000004 赵四  unit 0101, closed account (not offered to screening)
--   0000000005 钱五  unit 0102, matches most rules but not the unit
--   0000000006 孙六  unit 0101, ten zero readings, own generation
--   0000000007 周七  unit 0101, two billing points (duplicates for DISTINCT)
--   0000000008 吴八  unit 0101, no source, no ledger, address code in lower case


-- ---------------------------------------------------------------------------
-- Organisation
INSERT INTO z_dwbm (dm, mc, sjdw, jb, sfyx) VALUES ('01', '青禾省电力公司', NULL, 1, 1);
INSERT INTO z_dwbm (dm, mc, sjdw, jb, sfyx) VALUES ('0101', '城区供电局', '01', 2, 1);
INSERT INTO z_dwbm (dm, mc, sjdw, jb, sfyx) VALUES ('010101', '城东供电所', '0101', 3, 1);
INSERT INTO z_dwbm (dm, mc, sjdw, jb, sfyx) VALUES ('0102', '郊区供电局', '01', 2, 1);

INSERT INTO z_bmbm (dm, mc, sjbm) VALUES ('01', '用电检查科', NULL);
INSERT INTO z_bmbm (dm, mc, sjbm) VALUES ('02', '计量班', NULL);
INSERT INTO z_bmbm (dm, mc, sjbm) VALUES ('03', '营业班', NULL);

INSERT INTO z_xtczy (dm, xingming, dw, bm, kl, sfyx) VALUES ('czy01', '张检查', '0101', '01', NULL, 1);
INSERT INTO z_xtczy (dm, xingming, dw, bm, kl, sfyx) VALUES ('czy02', '李计量', '0101', '02', NULL, 1);
INSERT INTO z_xtczy (dm, xingming, dw, bm, kl, sfyx) VALUES ('czy03', '王审批', '0101', '01', NULL, 1);
INSERT INTO z_xtczy (dm, xingming, dw, bm, kl, sfyx) VALUES ('czy09', '赵外局', '0102', '03', NULL, 1);

-- czy01 and czy03 hold a post in force whose function grants the alarm code
-- 40099; czy02's post is out of force.
INSERT INTO z_gw (dm, mc, dw, sfyx) VALUES ('gw01', '用电检查岗', '0101', 1);
INSERT INTO z_gw (dm, mc, dw, sfyx) VALUES ('gw02', '停用岗', '0101', 0);
INSERT INTO z_czyygw (czydm, zdm) VALUES ('czy01', 'gw01');
INSERT INTO z_czyygw (czydm, zdm) VALUES ('czy02', 'gw02');
INSERT INTO z_czyygw (czydm, zdm) VALUES ('czy03', 'gw01');
INSERT INTO z_ywzn (dm, mc, sfyx) VALUES ('zn01', '异常报警处理', 1);
INSERT INTO z_ywzn (dm, mc, sfyx) VALUES ('zn02', '检查审批', 1);
INSERT INTO z_gwyzn (gwdm, zndm) VALUES ('gw01', 'zn01');
INSERT INTO z_gwyzn (gwdm, zndm) VALUES ('gw01', 'zn02');
INSERT INTO z_gwyzn (gwdm, zndm) VALUES ('gw02', 'zn01');
INSERT INTO z_znyywx (zndm, cldm) VALUES ('zn01', '40099');
INSERT INTO z_znyywx (zndm, cldm) VALUES ('zn02', '40102');

-- ---------------------------------------------------------------------------
-- Code tables
INSERT INTO w_khlx (dm, mc) VALUES ('1', '高压');
INSERT INTO w_khlx (dm, mc) VALUES ('2', '低压非居民');
INSERT INTO w_khlx (dm, mc) VALUES ('3', '低压居民');
INSERT INTO w_dydj (dm, mc) VALUES ('01', '10kV');
INSERT INTO w_dydj (dm, mc) VALUES ('02', '0.4kV');
INSERT INTO w_dydj (dm, mc) VALUES ('03', '0.22kV');
INSERT INTO c_dydj (dm, mc) VALUES ('01', '10kV');
INSERT INTO c_dydj (dm, mc) VALUES ('02', '0.4kV');
INSERT INTO w_ydlb (dm, mc) VALUES ('100', '大工业用电');
INSERT INTO w_ydlb (dm, mc) VALUES ('200', '非工业用电');
INSERT INTO w_ydlb (dm, mc) VALUES ('300', '居民生活用电');
INSERT INTO w_zyhy (dm, mc) VALUES ('A', '工业');
INSERT INTO w_zyhy (dm, mc) VALUES ('B', '商业');
INSERT INTO w_qy (dm, mc) VALUES ('001', '东区');
INSERT INTO w_qy (dm, mc) VALUES ('002', '西区');
INSERT INTO w_yhdm (dm, mc) VALUES ('B01', '工商银行');
INSERT INTO w_fkfs (dm, mc) VALUES ('1', '走收');
INSERT INTO w_fkfs (dm, mc) VALUES ('2', '银行代扣');
INSERT INTO w_jclx (dm, mc) VALUES ('01', '常规检查');
INSERT INTO w_jclx (dm, mc) VALUES ('02', '专项检查');
INSERT INTO w_jcxm (dm, mc) VALUES ('01', '计量装置');
INSERT INTO w_jcxm (dm, mc) VALUES ('02', '用电安全');
INSERT INTO w_jcxm (dm, mc) VALUES ('03', '违约用电');
INSERT INTO w_qxxz (dm, mc) VALUES ('01', '一般缺陷');
INSERT INTO w_qxxz (dm, mc) VALUES ('02', '重大隐患');
INSERT INTO w_gzxz (dm, mc) VALUES ('01', '表计烧坏');
INSERT INTO w_gzxz (dm, mc) VALUES ('02', '表计停走');
INSERT INTO w_gzxz (dm, mc) VALUES ('03', '接线错误');
INSERT INTO w_dl (dm, mc) VALUES ('01', '1.5(6)A');
INSERT INTO w_dl (dm, mc) VALUES ('02', '5(20)A');
INSERT INTO w_xx (dm, mc) VALUES ('01', '单相');
INSERT INTO w_xx (dm, mc) VALUES ('02', '三相四线');
INSERT INTO w_dbdy (dm, mc) VALUES ('01', '220V');
INSERT INTO w_dbdy (dm, mc) VALUES ('02', '3×220/380V');
INSERT INTO w_dnbjd (dm, dmsm) VALUES ('01', '1.0级');
INSERT INTO w_dnbjd (dm, dmsm) VALUES ('02', '2.0级');
INSERT INTO w_hgqjd (dm, mc) VALUES ('01', '0.2S');
INSERT INTO w_hgqjd (dm, mc) VALUES ('02', '0.5');
INSERT INTO w_dlbb (dm, mc) VALUES ('01', '50/5');
INSERT INTO w_dlbb (dm, mc) VALUES ('02', '100/5');
INSERT INTO w_dlbb (dm, mc) VALUES ('03', '200/5');
INSERT INTO w_dybb (dm, mc) VALUES ('01', '10000/100');

INSERT INTO b_djb (djm, djmc, dj, ydlb, dydj) VALUES ('D100', '大工业', 0.6, '100', '01');
INSERT INTO b_djb (djm, djmc, dj, ydlb, dydj) VALUES ('D200', '非工业', 0.8, '200', '02');
INSERT INTO b_djb (djm, djmc, dj, ydlb, dydj) VALUES ('D300', '居民', 0.5, '300', '03');
INSERT INTO all_djm (djm, djmc, dj, sfyx) VALUES ('D100', '大工业', 0.6, '是');
INSERT INTO all_djm (djm, djmc, dj, sfyx) VALUES ('D200', '非工业', 0.8, '是');
INSERT INTO all_djm (djm, djmc, dj, sfyx) VALUES ('D300', '居民', 0.5, '是');
INSERT INTO all_djm (djm, djmc, dj, sfyx) VALUES ('D999', '旧电价', 0.4, '否');

-- ---------------------------------------------------------------------------
-- Network. Feeder 1002 names a substation that is not registered; 1003
-- hangs under a missing parent.
INSERT INTO y_bdz (bdzbh, bdzmc, dydj, dw) VALUES ('BDZ01', '城东变', '01', '0101');
INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES ('1001', '城东线', '00001', 'BDZ01', '01', '0101');
INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES ('1002', '城西线', '00001', 'BDZ09', '01', '0101');
INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES ('100101', '城东一支线', '1001', 'BDZ01', '01', '0101');
INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES ('1003', '孤立线', '09999', NULL, '01', '0101');
INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES ('2001', '郊区线', '00001', 'BDZ01', '01', '0102');

INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, hh, xlbh, rl, zt, tyrq, dw) VALUES ('T001', '城东1号公变', '公变', NULL, '1001', 200, '运行', NULL, '0101');
INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, hh, xlbh, rl, zt, tyrq, dw) VALUES ('T002', '城西1号公变', '公变', NULL, '1002', 315, '运行', NULL, '0101');
INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, hh, xlbh, rl, zt, tyrq, dw) VALUES ('T101', '王一专变', '专变', '0000000001', '1001', 315, '运行', NULL, '0101');
INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, hh, xlbh, rl, zt, tyrq, dw) VALUES ('T201', '郊区1号公变', '公变', NULL, '2001', 100, '运行', NULL, '0102');

INSERT INTO g_tqgdl (tqbh, ny, dw, gdl, shsx, shxx) VALUES ('T001', '202402', '0101', 900, 8, 2);
INSERT INTO g_tqgdl (tqbh, ny, dw, gdl, shsx, shxx) VALUES ('T001', '202403', '0101', 1000, 8, 2);
INSERT INTO g_tqgdl (tqbh, ny, dw, gdl, shsx, shxx) VALUES ('T002', '202403', '0101', 500, 10, 3);
INSERT INTO g_tqgdl (tqbh, ny, dw, gdl, shsx, shxx) VALUES ('T201', '202403', '0102', 800, 8, 2);

INSERT INTO b_cbc (cbcbh, cbcmc, cby, dw) VALUES ('CB01', '城东一册', '抄表员甲', '0101');
INSERT INTO b_cbc (cbcbh, cbcmc, cby, dw) VALUES ('CB02', '城西一册', '抄表员乙', '0101');
INSERT INTO b_cbc (cbcbh, cbcmc, cby, dw) VALUES ('CB09', '郊区一册', '抄表员丙', '0102');


-- ---------------------------------------------------------------------------
-- Customer file

INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000001', '王一', '城东路1号', 'CDL1', '1', '身份证', '110101197001010011', 315, '王经理', '13800000001', '城东路1号办公楼', '100001', '王一实业', 1, 'A', '100', '01', 'B01', '6222000000000001', '0101', '001', '是', '刘经理', 'CB01', 'Y0001', '否', '2015-06-01 00:00:00', '2023-01-10 00:00:00', 12, '0000000101');
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000002', '李二', '城东路2号', 'CDL2', '2', '身份证', '110101198002020022', 50, '李二', '13800000002', '城东路2号', '100002', NULL, 2, 'B', '200', '02', 'B01', '6222000000000002', '0101', '002', '否', '刘经理', 'CB01', 'Y0002', '否', '2018-03-01 00:00:00', NULL, 6, '0000000102');
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000003', '张三', '城西路3号', 'CXL3', '3', '身份证', '110101199003030033', 8, '张三', '13800000003', '城西路3号', '100003', NULL, 1, 'B', '300', '03', NULL, NULL, '0101', NULL, '否', NULL, 'CB02', 'Y0003', '否', '2019-07-01 00:00:00', '2024-03-01 00:00:00', 24, '0000000103');
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000004', '赵四', '城东路4号', 'CDL4', '1', NULL, NULL, 100, '赵四', '13800000004', NULL, NULL, NULL, 1, 'A', '100', '01', NULL, NULL, '0101', '001', '否', NULL, 'CB01', 'Y0004', '是', '2010-01-01 00:00:00', '2022-05-01 00:00:00', 12, NULL);
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000005', '钱五', '郊区大道5号', 'JQ5', '2', NULL, NULL, 80, '钱五', '13800000005', NULL, NULL, NULL, 2, 'B', '100', '02', NULL, NULL, '0102', '001', '否', NULL, 'CB09', 'Y0005', '否', '2016-01-01 00:00:00', NULL, 12, '0000000105');
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000006', '孙六', '城西路6号', 'CXL6', '1', NULL, NULL, 630, '孙经理', '13800000006', '城西路6号', '100006', NULL, 1, 'A', '100', '01', NULL, NULL, '0101', '001', '否', NULL, 'CB02', 'Y0006', '否', '2012-01-01 00:00:00', '2023-11-20 00:00:00', 12, '0000000106');
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000007', '周七', '城东路7号', 'CDL7', '2', NULL, NULL, 160, '周七', '13800000007', '城东路7号', '100007', NULL, 2, 'A', '200', '02', NULL, NULL, '0101', '002', '否', NULL, 'CB01', 'Y0007', '否', '2017-01-01 00:00:00', '2023-10-20 00:00:00', 6, '0000000107');
INSERT INTO y_khda (hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zxr, cbcbh, yhh, xhbz, lhrq, scjcrq, jczq, cdbh) VALUES ('0000000008', '吴八', '城北路8号', 'cdl8', '3', NULL, NULL, 4, NULL, NULL, NULL, NULL, NULL, NULL, NULL, '300', '03', NULL, NULL, '0101', NULL, NULL, NULL, NULL, NULL, '否', '2023-01-01 00:00:00', '2024-01-05 00:00:00', 12, NULL);

INSERT INTO g_khda (hh, hm, yddz, khlx, dw) VALUES ('0000000001', '王一', '城东路1号', '1', '0101');

-- Main source of each customer (H8 has none); H1 and H5 have a second one.
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000001', 1, '主供', '专变', 'BDZ01', '1001', 'T101', '01', '0101');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000001', 2, '备用', '专变', 'BDZ01', '1002', 'T101', '01', '0101');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000002', 1, '主供', '公变', 'BDZ01', '1001', 'T001', '02', '0101');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000003', 1, '主供', '公变', NULL, '1002', 'T002', '03', '0101');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000004', 1, '主供', '公变', 'BDZ01', '1001', 'T001', '01', '0101');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000005', 1, '主供', '公变', 'BDZ01', '2001', 'T201', '02', '0102');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000005', 2, '备用', '公变', 'BDZ01', '2001', 'T201', '02', '0102');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000006', 1, '主供', '专变', NULL, '1002', 'T106', '01', '0101');
INSERT INTO y_gddy (hh, xh, dyxz, dylx, bdzbh, xlbh, byqbh, dydj, dw) VALUES ('0000000007', 1, '主供', '公变', 'BDZ01', '1001', 'T001', '02', '0101');

-- Billing set-up: H6 and H7 are billed by fixed quantity or ratio.
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000001', '01', 'D100', 1, '抄表', NULL, '0101');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000002', '01', 'D200', 1, '抄表', NULL, '0101');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000003', '01', 'D300', 1, '抄表', NULL, '0101');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000005', '01', 'D200', 2, '定量', 100, '0102');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000006', '01', 'D100', 1, '抄表', NULL, '0101');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000006', '02', 'D100', 3, '定比', 15, '0101');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000007', '01', 'D200', 2, '定量', 300, '0101');
INSERT INTO y_jfxx (hh, jfdbh, djm, js, jflx, dldbz, dw) VALUES ('0000000007', '02', 'D200', 2, '定比', 20, '0101');

-- Contracts: H1's expired, H6 has an expired and a running one.
INSERT INTO y_htxx (hh, htbh, htlx, qdrq, yxrq, dw) VALUES ('0000000001', 'HT001', '高压供用电合同', '2021-02-01 00:00:00', '2024-01-31 00:00:00', '0101');
INSERT INTO y_htxx (hh, htbh, htlx, qdrq, yxrq, dw) VALUES ('0000000002', 'HT002', '低压供用电合同', '2022-01-01 00:00:00', '2026-12-31 00:00:00', '0101');
INSERT INTO y_htxx (hh, htbh, htlx, qdrq, yxrq, dw) VALUES ('0000000005', 'HT005', '低压供用电合同', '2020-01-01 00:00:00', '2023-01-01 00:00:00', '0102');
INSERT INTO y_htxx (hh, htbh, htlx, qdrq, yxrq, dw) VALUES ('0000000006', 'HT006A', '高压供用电合同', '2020-07-01 00:00:00', '2023-06-30 00:00:00', '0101');
INSERT INTO y_htxx (hh, htbh, htlx, qdrq, yxrq, dw) VALUES ('0000000006', 'HT006B', '高压供用电合同', '2023-07-01 00:00:00', '2026-06-30 00:00:00', '0101');

INSERT INTO e_zbdygl (hh, xh, dymc, dylx, rl, tyrq, dw) VALUES ('0000000006', 1, '自备柴油发电机', '柴油', 200, NULL, '0101');
INSERT INTO e_zbdygl (hh, xh, dymc, dylx, rl, tyrq, dw) VALUES ('0000000005', 1, '自备光伏', '光伏', 50, NULL, '0102');

-- Operating meters and instrument transformers.

INSERT INTO y_yxdnb (txm, hh, jfdbh, jldbh, byqbh, dnbcch, dblb, dl, xx, jddj, dy, bj, cbsx, zhbl, cq, ckbbz, gkbbz, jlzzdfl, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx, zcrq, dw) VALUES ('TXM0001', '0000000001', '01', '001', 'T101', 'CC1001', '多功能表', '1.5(6)A', '三相四线', '1.0级', '3×220/380V', NULL, 1, 60, '供电局', '否', '否', 'I类', '配电室', 'JB01', '不算', NULL, '不算', NULL, '抄表', 'ABCDEFX', '2015-06-01 00:00:00', '0101');
INSERT INTO y_yxdnb (txm, hh, jfdbh, jldbh, byqbh, dnbcch, dblb, dl, xx, jddj, dy, bj, cbsx, zhbl, cq, ckbbz, gkbbz, jlzzdfl, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx, zcrq, dw) VALUES ('TXM0002', '0000000001', '01', '002', 'T101', 'CC1002', '有功表', '5(20)A', '三相四线', '2.0级', '3×220/380V', NULL, 2, 1, '供电局', '否', '否', 'III类', '配电室', 'JB02', '不算', NULL, '不算', NULL, '抄表', 'D', '2015-06-01 00:00:00', '0101');
INSERT INTO y_yxdnb (txm, hh, jfdbh, jldbh, byqbh, dnbcch, dblb, dl, xx, jddj, dy, bj, cbsx, zhbl, cq, ckbbz, gkbbz, jlzzdfl, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx, zcrq, dw) VALUES ('TXM0003', '0000000002', '01', '001', 'T001', 'CC2001', '有功表', '5(20)A', '单相', '2.0级', '220V', NULL, 1, 1, '供电局', '否', '否', 'V类', '表箱', 'JB03', '不算', NULL, '不算', NULL, '抄表', 'D', '2018-03-01 00:00:00', '0101');
INSERT INTO y_yxdnb (txm, hh, jfdbh, jldbh, byqbh, dnbcch, dblb, dl, xx, jddj, dy, bj, cbsx, zhbl, cq, ckbbz, gkbbz, jlzzdfl, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx, zcrq, dw) VALUES ('TXM0005', '0000000005', '01', '001', 'T201', 'CC5001', '有功表', '5(20)A', '单相', '2.0级', '220V', NULL, 1, 1, '供电局', '否', '否', 'V类', '表箱', 'JB05', '不算', NULL, '不算', NULL, '抄表', 'D', '2016-01-01 00:00:00', '0102');
INSERT INTO y_yxdnb (txm, hh, jfdbh, jldbh, byqbh, dnbcch, dblb, dl, xx, jddj, dy, bj, cbsx, zhbl, cq, ckbbz, gkbbz, jlzzdfl, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx, zcrq, dw) VALUES ('TXM0006', '0000000006', '01', '001', 'T106', 'CC6001', '复费率表', '1.5(6)A', '三相四线', '1.0级', '3×220/380V', NULL, 1, 40, '供电局', '否', '否', 'II类', '配电室', 'JB06', '不算', NULL, '不算', NULL, '抄表', 'CD', '2012-01-01 00:00:00', '0101');
INSERT INTO y_yxhgq (hgqbh, hh, jldbh, sddbh, hgqcch, hgqlb, hgqbb, jddj, zs, dw) VALUES ('HGQ001', '0000000001', '001', NULL, 'HGQCC001', 'TA', '100/5', '0.2S', 3, '0101');
INSERT INTO y_yxhgq (hgqbh, hh, jldbh, sddbh, hgqcch, hgqlb, hgqbb, jddj, zs, dw) VALUES ('HGQ002', '0000000001', '002', NULL, 'HGQCC002', 'TV', '10000/100', '0.5', 2, '0101');
INSERT INTO y_yxhgq (hgqbh, hh, jldbh, sddbh, hgqcch, hgqlb, hgqbb, jddj, zs, dw) VALUES ('HGQ601', '0000000006', '001', NULL, 'HGQCC601', 'TA', '50/5', '0.2S', 3, '0101');

-- ---------------------------------------------------------------------------
-- Energy ledger. Totals (peak + flat + valley) per month:
--   H1 3000 in 202303 and 202312..202402, 4000 in 202403 (valley 1500)
--   H2 100 in 202303 and 202312..202402, 0 in 202403
--   H3 50, 60 in 202311, 202312, then 0 for three months
--   H6 100 in 202305, then 0 for ten months (202306..202403)
--   H7 two billing points: 400 a month, 800 in 202403 (valley 100 each)
--   H5 (other unit) 100 a month, 0 in 202403; H4 (closed) 0 in 202403

INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000001', '202303', '01', 1000, 1000, 1000, 300, 92, 90, 'D100', '2023-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000001', '202312', '01', 1000, 1000, 1000, 300, 92, 90, 'D100', '2023-12-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000001', '202401', '01', 1000, 1000, 1000, 300, 92, 90, 'D100', '2024-01-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000001', '202402', '01', 1000, 1000, 1000, 300, 92, 90, 'D100', '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000001', '202403', '01', 1000, 1500, 1500, 800, 100, 90, 'D100', '2024-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000002', '202303', '01', 30, 40, 30, 0, 80, 90, 'D200', '2023-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000002', '202312', '01', 30, 40, 30, 0, 80, 90, 'D200', '2023-12-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000002', '202401', '01', 30, 40, 30, 0, 80, 90, 'D200', '2024-01-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000002', '202402', '01', 30, 40, 30, 0, 80, 90, 'D200', '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000002', '202403', '01', 0, 0, 0, 0, 80, 90, 'D200', '2024-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000003', '202311', '01', 10, 30, 10, 0, NULL, NULL, 'D300', '2023-11-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000003', '202312', '01', 10, 40, 10, 0, NULL, NULL, 'D300', '2023-12-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000003', '202401', '01', 0, 0, 0, 0, NULL, NULL, 'D300', '2024-01-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000003', '202402', '01', 0, 0, 0, 0, NULL, NULL, 'D300', '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000003', '202403', '01', 0, 0, 0, 0, NULL, NULL, 'D300', '2024-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202305', '01', 20, 60, 20, 0, NULL, NULL, 'D100', '2023-05-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202306', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-06-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202307', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-07-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202308', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-08-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202309', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-09-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202310', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-10-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202311', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-11-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202312', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2023-12-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202401', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2024-01-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202402', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000006', '202403', '01', 0, 0, 0, 0, NULL, NULL, 'D100', '2024-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202303', '01', 50, 100, 50, 0, NULL, NULL, 'D200', '2023-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202303', '02', 50, 100, 50, 0, NULL, NULL, 'D200', '2023-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202312', '01', 50, 100, 50, 0, NULL, NULL, 'D200', '2023-12-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202312', '02', 50, 100, 50, 0, NULL, NULL, 'D200', '2023-12-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202401', '01', 50, 100, 50, 0, NULL, NULL, 'D200', '2024-01-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202401', '02', 50, 100, 50, 0, NULL, NULL, 'D200', '2024-01-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202402', '01', 50, 100, 50, 0, NULL, NULL, 'D200', '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202402', '02', 50, 100, 50, 0, NULL, NULL, 'D200', '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202403', '01', 20, 280, 100, 0, 96, 90, 'D200', '2024-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000007', '202403', '02', 50, 250, 100, 0, 97, 85, 'D200', '2024-03-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000005', '202303', '01', 30, 40, 30, 0, NULL, NULL, NULL, '2023-03-25 00:00:00', '0102');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000005', '202312', '01', 30, 40, 30, 0, NULL, NULL, NULL, '2023-12-25 00:00:00', '0102');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000005', '202401', '01', 30, 40, 30, 0, NULL, NULL, NULL, '2024-01-25 00:00:00', '0102');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000005', '202402', '01', 30, 40, 30, 0, NULL, NULL, NULL, '2024-02-25 00:00:00', '0102');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000005', '202403', '01', 0, 0, 0, 0, 99, 90, NULL, '2024-03-25 00:00:00', '0102');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000004', '202402', '01', 10, 10, 10, 0, NULL, NULL, NULL, '2024-02-25 00:00:00', '0101');
INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, sjll, llkhbz, djm, cbrq, dw) VALUES ('0000000004', '202403', '01', 0, 0, 0, 0, NULL, NULL, NULL, '2024-03-25 00:00:00', '0101');

-- Charges: negative receivables are refunds.
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000001', '202403', 1, 5000, 5000, '2024-03-28 00:00:00', '0101');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000002', '202402', 1, -900, 0, '2024-02-28 00:00:00', '0101');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000002', '202403', 1, -250, 0, '2024-03-28 00:00:00', '0101');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000002', '202403', 2, -50, 0, '2024-03-29 00:00:00', '0101');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000003', '202403', 1, -80, 0, '2024-03-28 00:00:00', '0101');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000005', '202403', 1, -500, 0, '2024-03-28 00:00:00', '0102');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000007', '202403', 1, -120, 0, '2024-03-28 00:00:00', '0101');
INSERT INTO c_dfxx (hh, ny, xh, ysdf, ssdf, fxrq, dw) VALUES ('0000000007', '202403', 2, -130, 0, '2024-03-29 00:00:00', '0101');

-- Refund/supplement records: case 0000000301 under refund document
-- 0000000401 (two months), another case, and the draft of a new case 0000000399.
INSERT INTO b_tbjl (tbcdh, glcdbh, hh, tblx, tbyy, jbr, jbrq, dw) VALUES ('0000000401', '0000000301', '0000000001', '补', '计量故障少计', '李计量', '2024-04-11 00:00:00', '0101');
INSERT INTO b_tbjl (tbcdh, glcdbh, hh, tblx, tbyy, jbr, jbrq, dw) VALUES ('0000000402', '0000000302', '0000000006', '退', '多计', '李计量', '2024-04-11 00:00:00', '0101');
INSERT INTO b_tbjl (tbcdh, glcdbh, hh, tblx, tbyy, jbr, jbrq, dw) VALUES ('0000000399', '0000000399', '0000000006', '补', '草稿', '李计量', '2024-04-14 00:00:00', '0101');
INSERT INTO b_tbdfxx (tbcdh, hh, ny, jfdbh, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) VALUES ('0000000401', '0000000001', '202402', '01', 100, 50, 150, 60, 15, 45, 3, 2, 10, 0, 5);
INSERT INTO b_tbdfxx (tbcdh, hh, ny, jfdbh, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) VALUES ('0000000401', '0000000001', '202403', '01', -20, -10, -30, -12, -3, -9, 0, 0, 0, 0, -1);
INSERT INTO b_tbdfxx (tbcdh, hh, ny, jfdbh, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) VALUES ('0000000402', '0000000006', '202403', '01', -999, 0, 0, -999, 0, 0, 0, 0, 0, 0, 0);

-- ---------------------------------------------------------------------------
-- Applications in the workflow and their control rows
INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh) VALUES ('0000000201', '01', '401', '2024-04-01 09:00:00', '检查批次0000000011', '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01');
INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh) VALUES ('0000000210', '01', '130', '2024-04-05 00:00:00', '投诉', '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01');
INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh) VALUES ('0000000211', '01', '110', '2024-04-06 00:00:00', '增容', '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01');
INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh) VALUES ('0000000301', '02', '160', '2024-04-10 08:00:00', '计量异常', '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01');
INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh) VALUES ('0000000303', '01', '401', '2024-03-01 09:00:00', NULL, '0000000003', '3', '张三', '城西路3号', 8, '张三', '13800000003', '0101', NULL, 'CB02');
INSERT INTO a_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl) VALUES ('0000000201', NULL, NULL, NULL, NULL, NULL, 50);
INSERT INTO a_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl) VALUES ('0000000301', '无', '无', '无', '是', NULL, 315);
INSERT INTO a_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl) VALUES ('0000000303', NULL, NULL, NULL, NULL, NULL, 8);
INSERT INTO a_gdfa (gdfabh, cdbh, hh, kcr, kcbz, kcrq) VALUES ('0000000501', '0000000301', '0000000001', '李计量', '初勘', '2024-04-10 00:00:00');

-- The metering scheme of case 0000000301: meter TXM0001 and transformer
-- HGQ001 exchanged, each with its replacement; the draft of new case
-- 0000000399 removes H6's meter and transformer at the same point '001'.

INSERT INTO a_dnbfa (id, cdbh, hh, jfdbh, jldbh, txm, byqbh, dnbcch, dblb, gzlx, dl, xx, bgsm, jddj, dy, bj, cbsx, dw, zhbl, cq, ckbbz, gkbbz, jlzzdfl, thdl, thxx, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx) VALUES ('0000009101', '0000000301', '0000000001', '01', '001', 'TXM0001', 'T101', 'CC1001', '多功能表', '01', '1.5(6)A', '三相四线', '换取', '1.0级', '3×220/380V', NULL, 1, '0101', 60, '供电局', '否', '否', 'I类', '1.5(6)A', '三相四线', '配电室', 'JB01', NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO a_dnbfa (id, cdbh, hh, jfdbh, jldbh, txm, byqbh, dnbcch, dblb, gzlx, dl, xx, bgsm, jddj, dy, bj, cbsx, dw, zhbl, cq, ckbbz, gkbbz, jlzzdfl, thdl, thxx, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx) VALUES ('0000009102', '0000000301', '0000000001', '01', '001', NULL, 'T101', NULL, '多功能表', NULL, '1.5(6)A', '三相四线', '新装', '1.0级', '3×220/380V', NULL, 1, '0101', NULL, NULL, '否', '否', 'I类', '1.5(6)A', '三相四线', '配电室', 'JB01', '不算', NULL, '不算', NULL, '抄表', 'ABCDEFX');
INSERT INTO a_dnbfa (id, cdbh, hh, jfdbh, jldbh, txm, byqbh, dnbcch, dblb, gzlx, dl, xx, bgsm, jddj, dy, bj, cbsx, dw, zhbl, cq, ckbbz, gkbbz, jlzzdfl, thdl, thxx, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx) VALUES ('0000009103', '0000000399', '0000000006', '01', '001', 'TXM0006', 'T106', 'CC6001', '复费率表', '02', '1.5(6)A', '三相四线', '拆除', '1.0级', '3×220/380V', NULL, 1, '0101', 40, '供电局', '否', '否', 'II类', '1.5(6)A', '三相四线', '配电室', 'JB06', NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO a_hgqfa (id, cdbh, hh, jldbh, sddbh, hgqcch, hgqbh, hgqlb, hgqbb, bgsm, zs, gzlb, jddj, dw) VALUES ('0000009201', '0000000301', '0000000001', '001', NULL, 'HGQCC001', 'HGQ001', 'TA', '100/5', '换取', 1, '01', NULL, '0101');
INSERT INTO a_hgqfa (id, cdbh, hh, jldbh, sddbh, hgqcch, hgqbh, hgqlb, hgqbb, bgsm, zs, gzlb, jddj, dw) VALUES ('0000009202', '0000000301', '0000000001', '001', NULL, NULL, NULL, 'TA', '100/5', '新装', 1, NULL, NULL, '0101');
INSERT INTO a_hgqfa (id, cdbh, hh, jldbh, sddbh, hgqcch, hgqbh, hgqlb, hgqbb, bgsm, zs, gzlb, jddj, dw) VALUES ('0000009203', '0000000399', '0000000006', '001', NULL, 'HGQCC601', 'HGQ601', 'TA', '50/5', '拆除', 1, '02', NULL, '0101');

-- ---------------------------------------------------------------------------
-- Archived applications. Business expansion (class 0001) of H1 and H7 in
-- April 2024, H6's on 2024-04-15 after midnight, H3's a complaint (0003).
-- Breach/theft (402/401 with sfwyqd '是') in 2024: H1 four, H2 two.
-- Suspensions (405) in 2024: H3 two, H2 one; H6 two in 2023.
-- Metering faults (160/401 with sfygz '是') in 2024: H6 two, H1 one.

INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000101', '03', '110', '2024-04-10 09:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-04-10 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000102', '03', '101', '2024-02-01 10:00:00', NULL, '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01', '2024-02-01 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000103', '03', '130', '2024-04-12 11:00:00', NULL, '0000000003', '3', '张三', '城西路3号', 8, '张三', '13800000003', '0101', NULL, 'CB02', '2024-04-12 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000105', '03', '110', '2024-04-05 00:00:00', NULL, '0000000005', '2', '钱五', '郊区大道5号', 80, '钱五', '13800000005', '0102', '001', 'CB09', '2024-04-05 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000106', '03', '115', '2024-04-15 09:30:00', NULL, '0000000006', '1', '孙六', '城西路6号', 630, '孙经理', '13800000006', '0101', '001', 'CB02', '2024-04-15 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000107', '03', '101', '2024-04-03 14:00:00', NULL, '0000000007', '2', '周七', '城东路7号', 160, '周七', '13800000007', '0101', '002', 'CB01', '2024-04-03 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000811', '01', '402', '2024-01-15 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-01-15 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000812', '01', '402', '2024-02-15 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-02-15 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000813', '01', '401', '2024-03-15 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-03-15 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000814', '01', '401', '2024-03-25 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-03-25 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000815', '01', '401', '2024-03-30 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-03-30 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000816', '01', '402', '2023-12-20 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2023-12-20 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000817', '02', '160', '2024-03-05 10:00:00', NULL, '0000000001', '1', '王一', '城东路1号', 315, '王经理', '13800000001', '0101', '001', 'CB01', '2024-03-05 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000821', '01', '402', '2024-02-01 10:00:00', NULL, '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01', '2024-02-01 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000822', '01', '401', '2024-03-01 10:00:00', NULL, '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01', '2024-03-01 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000823', '01', '405', '2024-02-20 10:00:00', NULL, '0000000002', '2', '李二', '城东路2号', 50, '李二', '13800000002', '0101', '002', 'CB01', '2024-02-20 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000831', '01', '405', '2024-01-10 10:00:00', NULL, '0000000003', '3', '张三', '城西路3号', 8, '张三', '13800000003', '0101', NULL, 'CB02', '2024-01-10 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000832', '01', '405', '2024-03-10 10:00:00', NULL, '0000000003', '3', '张三', '城西路3号', 8, '张三', '13800000003', '0101', NULL, 'CB02', '2024-03-10 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000851', '01', '402', '2024-01-05 10:00:00', NULL, '0000000005', '2', '钱五', '郊区大道5号', 80, '钱五', '13800000005', '0102', '001', 'CB09', '2024-01-05 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000852', '01', '402', '2024-02-05 10:00:00', NULL, '0000000005', '2', '钱五', '郊区大道5号', 80, '钱五', '13800000005', '0102', '001', 'CB09', '2024-02-05 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000853', '01', '402', '2024-03-05 10:00:00', NULL, '0000000005', '2', '钱五', '郊区大道5号', 80, '钱五', '13800000005', '0102', '001', 'CB09', '2024-03-05 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000854', '01', '401', '2024-03-06 10:00:00', NULL, '0000000005', '2', '钱五', '郊区大道5号', 80, '钱五', '13800000005', '0102', '001', 'CB09', '2024-03-06 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000861', '01', '405', '2023-05-01 10:00:00', NULL, '0000000006', '1', '孙六', '城西路6号', 630, '孙经理', '13800000006', '0101', '001', 'CB02', '2023-05-01 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000862', '01', '405', '2023-08-01 10:00:00', NULL, '0000000006', '1', '孙六', '城西路6号', 630, '孙经理', '13800000006', '0101', '001', 'CB02', '2023-08-01 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000863', '02', '160', '2024-02-02 10:00:00', NULL, '0000000006', '1', '孙六', '城西路6号', 630, '孙经理', '13800000006', '0101', '001', 'CB02', '2024-02-02 18:00:00');
INSERT INTO a_h_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, htrl, lxr, lxdh, dw, xzq, cbcbh, gdsj) VALUES ('0000000864', '01', '401', '2024-03-03 10:00:00', NULL, '0000000006', '1', '孙六', '城西路6号', 630, '孙经理', '13800000006', '0101', '001', 'CB02', '2024-03-03 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000811', '否', '无', '无', '否', '是', 315, '2024-01-15 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000812', '否', '无', '无', '否', '是', 315, '2024-02-15 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000813', '否', '无', '无', '否', '是', 315, '2024-03-15 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000814', '否', '无', '无', '否', '是', 315, '2024-03-25 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000815', '否', '无', '无', '否', '否', 315, '2024-03-30 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000816', '否', '无', '无', '否', '是', 315, '2023-12-20 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000817', '是', '无', '无', '否', '否', 315, '2024-03-05 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000821', '否', '无', '无', '否', '是', 50, '2024-02-01 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000822', '否', '无', '无', '否', '是', 50, '2024-03-01 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000851', '否', '无', '无', '否', '是', 80, '2024-01-05 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000852', '否', '无', '无', '否', '是', 80, '2024-02-05 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000853', '否', '无', '无', '否', '是', 80, '2024-03-05 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000854', '是', '无', '无', '否', '是', 80, '2024-03-06 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000863', '是', '无', '无', '否', '否', 630, '2024-02-02 18:00:00');
INSERT INTO a_h_ykkzb (cdbh, sfygz, sfxyb, sfcjx, sfxysf, sfwyqd, htrl, gdsj) VALUES ('0000000864', '是', '无', '无', '否', '否', 630, '2024-03-03 18:00:00');

-- ---------------------------------------------------------------------------
-- Workflow positions. Tasks 201, 202 and 207 wait at 40103 in unit 0101,
-- 209 at 40103 in unit 0102; 203 and 206 at approval; 301 is a metering
-- anomaly case; 303 an anomaly raised by an inspection; 210 and 299 stand
-- at items the workflow definition does not know.

INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000201', '401', '0000000002', '李二', '城东路2号', '40103', '检查工作单打印', '40102', '检查工作审批', 'czy03', '0101', '一般', '2024-04-11 08:00:00', '2024-04-11 10:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000202', '401', '0000000007', '周七', '城东路7号', '40103', '检查工作单打印', '40102', '检查工作审批', 'czy99', '0101', '一般', '2024-04-11 08:00:00', '2024-04-11 10:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000203', '401', '0000000001', '王一', '城东路1号', '40102', '检查工作审批', '40101', '检查任务下达', 'czy01', '0101', '一般', '2024-04-14 08:00:00', '2024-04-14 16:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000206', '401', '0000000001', '王一', '城东路1号', '40102', '检查工作审批', '40101', '检查任务下达', 'czy01', '0101', '一般', '2024-04-14 08:00:00', '2024-04-14 16:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000207', '401', '0000000003', '张三', '城西路3号', '40103', '检查工作单打印', '40102', '检查工作审批', 'czy03', '0101', '一般', '2024-04-15 08:00:00', '2024-04-15 09:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000209', '401', '0000000005', '钱五', '郊区大道5号', '40103', '检查工作单打印', '40102', '检查工作审批', 'czy09', '0102', '一般', '2024-04-12 08:00:00', '2024-04-12 10:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000210', '130', '0000000002', '李二', '城东路2号', '13001', '投诉受理', NULL, NULL, 'czy01', '0101', '一般', '2024-04-05 08:00:00', '2024-04-05 10:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000299', '999', '0000000008', '吴八', '城北路8号', '99999', '未知环节', NULL, NULL, 'czy01', '0101', '一般', '2024-04-01 08:00:00', '2024-04-01 10:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000301', '160', '0000000001', '王一', '城东路1号', '16001', '计量异常记录', NULL, NULL, 'czy02', '0101', '一般', '2024-04-10 08:00:00', '2024-04-10 08:00:00');
INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) VALUES ('0000000303', '401', '0000000003', '张三', '城西路3号', '40104', '检查结果录入', '40103', '检查工作单打印', 'czy01', '0101', '一般', '2024-03-16 08:00:00', '2024-03-16 12:00:00');

-- ---------------------------------------------------------------------------
-- Inspection: plans, inspectors (czy07 is no operator), batches, tasks.
INSERT INTO e_jcjh (jhbh, jhlx, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, dw, zdbm, zdr, zdrq) VALUES ('0001', '年计划', '2024-01-01 00:00:00', '2024-12-31 00:00:00', '用电检查科', 120, '年度用电检查', NULL, '0101', '01', '张检查', '2023-12-20 00:00:00');
INSERT INTO e_jcjh (jhbh, jhlx, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, dw, zdbm, zdr, zdrq) VALUES ('0002', '月计划', '2024-04-01 00:00:00', '2024-04-30 00:00:00', '计量班', 20, '四月计量检查', NULL, '0101', '02', '李计量', '2024-03-28 00:00:00');
INSERT INTO e_jcjh (jhbh, jhlx, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, dw, zdbm, zdr, zdrq) VALUES ('0003', '年计划', '2024-01-01 00:00:00', '2024-12-31 00:00:00', '营业班', 30, '年度复查', NULL, '0101', '99', '王审批', '2024-01-05 00:00:00');
INSERT INTO e_jcjh (jhbh, jhlx, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, dw, zdbm, zdr, zdrq) VALUES ('0004', '年计划', '2024-01-01 00:00:00', '2024-12-31 00:00:00', '营业班', 50, '郊区年度检查', NULL, '0102', '03', '赵外局', '2024-01-06 00:00:00');

INSERT INTO e_jcryxx (czydm, xm, jczh, jczjb, xb, dw) VALUES ('czy01', '张检查', 'JC001', '一级', '男', '0101');
INSERT INTO e_jcryxx (czydm, xm, jczh, jczjb, xb, dw) VALUES ('czy02', '李计量', 'JC002', '二级', '女', '0101');
INSERT INTO e_jcryxx (czydm, xm, jczh, jczjb, xb, dw) VALUES ('czy07', '周临时', 'JC007', '三级', '男', '0101');
INSERT INTO e_jcryxx (czydm, xm, jczh, jczjb, xb, dw) VALUES ('czy09', '赵外局', 'JC009', '一级', '男', '0102');

INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, bz, zdr, zdsj, spr, spyj, sprq) VALUES ('0000000010', '01', '三月常规检查', '0101', NULL, '张检查', '2024-01-05 09:00:00', '王审批', '同意', '2024-01-06 10:00:00');
INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, bz, zdr, zdsj, spr, spyj, sprq) VALUES ('0000000011', '01', '四月专项检查', '0101', '重点客户', '张检查', '2024-03-10 09:00:00', '王审批', '同意', '2024-03-11 10:00:00');
INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, bz, zdr, zdsj, spr, spyj, sprq) VALUES ('0000000012', '01', '四月常规检查', '0101', NULL, '张检查', '2024-04-14 15:30:00', NULL, NULL, NULL);
INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, bz, zdr, zdsj, spr, spyj, sprq) VALUES ('0000000013', '99', '四月复查', '0101', NULL, '张检查', '2024-04-15 09:00:00', NULL, NULL, NULL);
INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, bz, zdr, zdsj, spr, spyj, sprq) VALUES ('0000000019', '03', '郊区检查', '0102', NULL, '赵外局', '2024-04-12 09:00:00', NULL, NULL, NULL);

INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000201', '0000000002', '李二', '城东路2号', '2', '02', '1001', 'T001', 6, NULL, '月计划', '2024-04-20 00:00:00', '常规检查', '张检查、李计量', 'JC001、JC002', NULL, '2', '已审批', '0000000011', NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000202', '0000000007', '周七', '城东路7号', '2', '02', '1001', 'T001', 6, '2023-10-20 00:00:00', '计划外', '2024-04-22 00:00:00', '专项检查', '张检查', 'JC001', NULL, '1', '已审批', '0000000011', NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000203', '0000000001', '王一', '城东路1号', '1', '01', '1001', NULL, 12, '2023-01-10 00:00:00', '年计划', '2024-04-18 00:00:00', '常规检查', '周临时', 'JC007', '司机', '2', '未审批', '0000000012', NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000204', '0000000003', '张三', '城西路3号', '3', '03', '1002', 'T002', 24, NULL, '年计划', '2024-03-15 00:00:00', '01', '李计量', 'JC002', NULL, '1', '已检查', '0000000010', NULL, '2024-03-16 10:00:00', '王审批', NULL, NULL, '发现问题', '表计封印缺失');
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000205', '0000000006', '孙六', '城西路6号', '1', '01', '1002', NULL, 12, NULL, '月计划', '2024-04-25 00:00:00', '常规检查', '张检查', 'JC001', NULL, '1', '已审批', '0000000010', '1', NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000206', '0000000001', '王一', '城东路1号', '1', '01', '1001', NULL, 12, '2023-01-10 00:00:00', '月计划', '2024-04-21 00:00:00', '常规检查', '张检查', 'JC001', NULL, NULL, '未审批', '0000000012', NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000207', '0000000003', '张三', '城西路3号', '3', '03', '1002', 'T002', 24, NULL, '计划外', '2024-04-19 00:00:00', '专项检查', '李计量', 'JC002', NULL, '1', '已审批', '0000000013', NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt) VALUES ('0000000209', '0000000005', '钱五', '郊区大道5号', '2', '02', '2001', 'T201', 12, NULL, '月计划', '2024-04-23 00:00:00', '常规检查', '赵外局', 'JC009', NULL, '1', '已审批', '0000000019', NULL, NULL, NULL, NULL, NULL, NULL, NULL);

INSERT INTO e_jcjg (cdbh, dm, mc, xcqk) VALUES ('0000000204', '01', '计量装置', '封印缺失');
INSERT INTO e_jcjg (cdbh, dm, mc, xcqk) VALUES ('0000000204', '02', '用电安全', '正常');
INSERT INTO e_jcjg (cdbh, dm, mc, xcqk) VALUES ('0000000201', '01', '计量装置', '正常');
INSERT INTO e_qxqkjl (id, cdbh, hh, qxxz, qxms, fxrq, zgqx, sffc, fccdbh, zt, jlr, jlrq, dw) VALUES ('0000000601', '0000000204', '0000000003', '01', '表计封印缺失', '2024-03-16 00:00:00', '2024-04-16 00:00:00', '是', NULL, '未整改', '李计量', '2024-03-16 00:00:00', '0101');

-- Metering anomaly work sheets: 301 with its amounts (a refund, negative),
-- 302 of a unit that v_dw does not know, 303 raised by an inspection.
INSERT INTO e_jlycgzd (cdbh, hh, hm, yddz, jcry, jczh, ycxz, gzlx, rdyj, jcrq, jcbz, dw, ywdm, sfcl, zbzdl, zbdldf, zbjbdf, zblldf, wysydf, yzbdf, clbz, clry, clrq, spry, sprq) VALUES ('0000000301', '0000000001', '王一', '城东路1号', '李计量', 'JC002', '故障表', '01', '现场检查校验', '2024-04-10 14:00:00', '现场检查发现电能表计度器卡滞，表尾接线盒封印被破坏，A相电流回路有短接痕迹，客户生产设备正常运行而电能表少计电量，经现场校验误差超差，判定为故障表，需更换电能表并退补电量电费，客户代表在场签字确认，现场已拍照取证并封存旧表。', '0101', '160', '1', -240, -101, -10, -4, 50, -65, '按故障期间平均用电量追补电量电费，更换多功能电能表一只，恢复正常计量。客户对处理结果无异议，已签字确认，追补电费随下月电费一并结算，旧表送检后存档备查，并列入下季度重点复查客户名单。', '李计量', '2024-04-12 00:00:00', '王审批', '2024-04-13 00:00:00');
INSERT INTO e_jlycgzd (cdbh, hh, hm, yddz, jcry, jczh, ycxz, gzlx, rdyj, jcrq, jcbz, dw, ywdm, sfcl, zbzdl, zbdldf, zbjbdf, zblldf, wysydf, yzbdf, clbz, clry, clrq, spry, sprq) VALUES ('0000000302', '0000000006', '孙六', '城西路6号', '李计量', 'JC002', '故障表', '02', '现场检查校验', '2024-04-11 10:00:00', '多计', '0199', '160', '1', 999, 999, 0, 0, 0, 999, NULL, NULL, NULL, NULL, NULL);
INSERT INTO e_jlycgzd (cdbh, hh, hm, yddz, jcry, jczh, ycxz, gzlx, rdyj, jcrq, jcbz, dw, ywdm, sfcl, zbzdl, zbdldf, zbjbdf, zblldf, wysydf, yzbdf, clbz, clry, clrq, spry, sprq) VALUES ('0000000303', '0000000003', '张三', '城西路3号', '张检查', 'JC001', NULL, NULL, NULL, '2024-03-16 10:00:00', '检查中发现计量异常', '0101', '401', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);

-- Breach and theft cases (only H1's customer is in the shared register).
INSERT INTO j_wyydqd (cdbh, hh, wylx, wyrq, wydl, wysydf, dw) VALUES ('0000000701', '0000000001', '窃电', '2024-02-10 00:00:00', 500, 1500, '0101');
INSERT INTO j_wyydqd (cdbh, hh, wylx, wyrq, wydl, wysydf, dw) VALUES ('0000000702', '0000000002', '违约', '2024-03-01 00:00:00', 0, 200, '0101');
INSERT INTO j_wymx (cdbh, xh, wyxm, wysm, je) VALUES ('0000000701', 1, '绕越计量', '私接线路', 1000);
INSERT INTO j_wymx (cdbh, xh, wyxm, wysm, je) VALUES ('0000000701', 2, '破坏封印', '封印损坏', 500);
INSERT INTO j_wymx (cdbh, xh, wyxm, wysm, je) VALUES ('0000000702', 1, '擅自增容', NULL, 200);

-- ---------------------------------------------------------------------------
-- Alarms: czy01 wants kinds 01, 02, 04, 05, 06 (not 03); czy03 all six.
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy01', '01', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy01', '02', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy01', '03', '否');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy01', '04', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy01', '05', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy01', '06', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy02', '01', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy03', '01', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy03', '02', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy03', '03', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy03', '04', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy03', '05', '是');
INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('czy03', '06', '是');

INSERT INTO e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq) VALUES ('202403', '0000000001', '01', '变压器停用客户，私自启封用电', '0101', '未处理', NULL, NULL, NULL, NULL);
INSERT INTO e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq) VALUES ('202403', '0000000002', '02', '专变客户，变压器无停用记录，抄见电量为零', '0101', '未处理', NULL, NULL, NULL, NULL);
INSERT INTO e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq) VALUES ('202403', '0000000003', '03', '力率考核客户，无功电量为零', '0101', '未处理', NULL, NULL, NULL, NULL);
INSERT INTO e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq) VALUES ('202402', '0000000001', '04', '专变客户，本月电量波动超过60％', '0101', '已处理', '2024-03-05 09:00:00', '已核实', '张检查', '2024-03-06 10:00:00');
INSERT INTO e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq) VALUES ('202403', '0000000005', '01', '变压器停用客户，私自启封用电', '0102', '未处理', NULL, NULL, NULL, NULL);
INSERT INTO e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq) VALUES ('202403', '0000000006', '05', '专变客户，负载率超过100％', '0101', '未处理', '2024-04-01 08:00:00', NULL, NULL, NULL);
