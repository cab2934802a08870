-- The workflow catalogue of the inspection module: its businesses, the items
-- of each with the item that follows, the grantable codes and the screen
-- (module export) that works each code.
--
-- Every statement adds only what the database lacks and changes nothing that
-- is there, so the script can be run on a production database any number of
-- times (SQLite, PostgreSQL and Oracle alike: dual is Oracle's one-row
-- table, which the reference schema also has). On a database that predates
-- the module, first add what the script writes into (once):
--
--   ALTER TABLE z_lcjd ADD fqwc NUMERIC DEFAULT 0;
--   CREATE TABLE tarvin_ywx_export (ywxdm VARCHAR(5) PRIMARY KEY,
--                                   export_name VARCHAR(40) NOT NULL);
--
-- Posts, functions and their grants are each utility's own data (the demo
-- generator writes them for its operators).

-- Businesses.
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) SELECT '160', '计量异常处理', '0002' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_dlyxyw WHERE ywdm = '160');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) SELECT '191', '计量装置校验', '0002' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_dlyxyw WHERE ywdm = '191');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) SELECT '201', '退补电量电费', '0004' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_dlyxyw WHERE ywdm = '201');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) SELECT '400', '用电检查管理', '0002' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_dlyxyw WHERE ywdm = '400');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) SELECT '401', '用电检查', '0002' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_dlyxyw WHERE ywdm = '401');

-- Each item and the next (none: the case ends after it). fqwc = 1 marks a
-- first item that the starting screen performs itself: the dispatch is the
-- step "检查任务下达", so starting the case finishes it.
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '40101', '检查任务下达', '401', '40102', 1, 1 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '40101');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '40102', '检查工作审批', '401', '40103', 2, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '40102');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '40103', '检查工作单打印', '401', '40104', 3, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '40103');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '40104', '检查结果录入', '401', NULL, 4, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '40104');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '16001', '计量异常记录', '160', '16002', 1, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '16001');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '16002', '计量装置装拆', '160', '16003', 2, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '16002');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '16003', '异常处理通知', '160', NULL, 3, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '16003');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '20101', '退补电量电费申请', '201', '20102', 1, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '20101');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '20102', '退补电量电费审批', '201', '20103', 2, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '20102');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '20103', '退补电费发行', '201', NULL, 3, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '20103');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '19101', '验表申请', '191', '19102', 1, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '19101');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '19102', '现场核查', '191', '19103', 2, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '19102');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '19103', '计量装置校验', '191', '19104', 3, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '19103');
INSERT INTO z_lcjd (ywxdm, ywxmc, ywdm, xywxdm, xh, fqwc) SELECT '19104', '校验结果通知', '191', NULL, 4, 0 FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_lcjd WHERE ywxdm = '19104');

-- Every grantable code: the workflow items, the handling code of the
-- suspicious-customer alarms, and the right to run the alarm scan (an
-- administrator's, offered in the host's menu).
INSERT INTO z_ywx (ywxdm, ywxmc, ywdm) SELECT l.ywxdm, l.ywxmc, l.ywdm FROM z_lcjd l
 WHERE l.ywdm IN ('160', '191', '201', '401')
   AND NOT EXISTS (SELECT 1 FROM z_ywx y WHERE y.ywxdm = l.ywxdm);
INSERT INTO z_ywx (ywxdm, ywxmc, ywdm) SELECT '40099', '异常客户报警处理', '400' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_ywx WHERE ywxdm = '40099');
INSERT INTO z_ywx (ywxdm, ywxmc, ywdm) SELECT '40098', '异常客户报警扫描', '400' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM z_ywx WHERE ywxdm = '40098');

-- The screen that works each code, by the module export the host calls.
-- 40101 is finished by the dispatch itself, so no case waits there; the
-- refund items, the verification application and the bench test are worked
-- by other modules of the marketing system and have no row.
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '40101', 'show_jc_jhbp' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '40101');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '40102', 'show_jc_jcgzsp' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '40102');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '40103', 'show_jc_jcgzd' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '40103');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '40104', 'show_jc_jcgzjgjl' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '40104');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '16001', 'show_jc_jlyccl' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '16001');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '16002', 'show_jc_jlyccl' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '16002');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '16003', 'show_jc_tbcltz' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '16003');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '19102', 'show_jc_jlyccl' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '19102');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '19104', 'show_jc_tbcltz' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '19104');
INSERT INTO tarvin_ywx_export (ywxdm, export_name) SELECT '40099', 'show_jc_bjtx' FROM dual
 WHERE NOT EXISTS (SELECT 1 FROM tarvin_ywx_export WHERE ywxdm = '40099');
