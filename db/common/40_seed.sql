-- Reference schema: the fixed catalogue every database needs.
--
-- The same text seeds SQLite and PostgreSQL (a test keeps
-- db/sqlite/40_seed.sql and db/postgres/40_seed.sql identical). Units,
-- operators, posts, code lists and customers are data of a utility, not of
-- the schema: the demo generator writes them.

INSERT INTO dual (dummy) VALUES ('X');

-- Businesses. Class '0001' is business expansion and change (screening by
-- archived applications offers these); '0002' metering and inspection;
-- '0003' customer service; '0004' charges.
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('101', '低压居民新装', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('102', '低压非居民新装', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('103', '高压新装', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('104', '临时用电', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('110', '增容', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('111', '减容', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('112', '暂停', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('113', '减容恢复', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('114', '暂停恢复', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('115', '迁址', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('116', '移表', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('117', '改压', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('118', '改类', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('119', '更名', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('120', '销户', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('121', '过户', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('122', '分户', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('123', '并户', '0001');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('126', '业务咨询', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('130', '故障报修', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('131', '投诉', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('132', '举报', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('133', '意见建议', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('135', '欠费停电', '0004');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('139', '信息查询', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('141', '服务预约', '0003');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('402', '违约用电窃电处理', '0002');
INSERT INTO z_dlyxyw (ywdm, ywmc, ywlbdm) VALUES ('405', '中止供电', '0002');

-- The businesses this module drives, their workflow and the screens that
-- work its items: 45_workflow_catalogue.sql.

-- Meter categories and transformer categories: the module's logic keys on
-- these names and codes (register kinds by meter category, ratio lists by
-- transformer category).
INSERT INTO w_dblb (dm, mc) VALUES ('01', '有功表');
INSERT INTO w_dblb (dm, mc) VALUES ('02', '无功表');
INSERT INTO w_dblb (dm, mc) VALUES ('03', '需量表');
INSERT INTO w_dblb (dm, mc) VALUES ('04', '多功能表');
INSERT INTO w_dblb (dm, mc) VALUES ('05', '复费率表');
INSERT INTO w_dblb (dm, mc) VALUES ('06', '预付费表');
INSERT INTO w_hgqlb (dm, mc) VALUES ('TA', '电流互感器');
INSERT INTO w_hgqlb (dm, mc) VALUES ('TV', '电压互感器');

-- Report definitions (z_report): template texts the report kit reads at run
-- time, so that a layout changes without a new program (docs/reports.md).
-- The alarm reminder list: the alarm screen gives the variables Dwdm, Dwmc
-- and Czydm and the rows of its alarm list (NY, HH, HM, BJXM, TXRQ).
INSERT INTO z_report (bbmc, bbsm, mb) VALUES ('报警提醒清单', '异常客户报警提醒清单，报警提醒屏幕打印', '{
  "page": {"size": "A4", "orientation": "portrait", "margins": [15, 15, 15, 12],
           "font": {"family": "宋体", "size": 10}},
  "bands": [
    {"band": "title", "height": 24, "items": [
      {"text": "报警提醒清单", "y": 0, "h": 11, "align": "center", "font": {"size": 18, "bold": true}},
      {"text": "单位：${Dwmc}", "x": 0, "y": 15, "w": 110, "h": 7},
      {"text": "操作员：${Czydm}", "x": 110, "y": 15, "w": 70, "h": 7, "align": "right"}
    ]},
    {"band": "detail", "height": 7, "stretch": true, "titleHeight": 8, "columns": [
      {"title": "年月", "field": "NY", "width": 16, "align": "center"},
      {"title": "户号", "field": "HH", "width": 24, "align": "center"},
      {"title": "户名", "field": "HM", "width": 42, "wrap": true},
      {"title": "报警内容", "field": "BJXM", "width": 76, "wrap": true},
      {"title": "提醒日期", "field": "TXRQ", "width": 22, "align": "center", "format": "yyyy-MM-dd"}
    ]},
    {"band": "summary", "height": 9, "items": [
      {"text": "共 ${Count} 条报警", "y": 2, "h": 6, "align": "right"}
    ]},
    {"band": "pageFooter", "height": 9, "items": [
      {"text": "第 ${Page} 页 共 ${Pages} 页", "y": 3, "h": 6, "align": "center"}
    ]}
  ]
}');

-- The screening result: the screening screen gives the variables Cxdx (the
-- category's caption), Dwmc, Jls (the customers found) and Dyrq (the print
-- date) and its result rows; the category's own columns (consecutive
-- months, swing, ...) are added by the screen at the right of the table.
INSERT INTO z_report (bbmc, bbsm, mb) VALUES ('异常客户查询结果', '异常客户检索结果清单，异常客户检索屏幕打印', '{
  "page": {"size": "A4", "orientation": "landscape", "margins": [15, 12, 15, 10],
           "font": {"family": "宋体", "size": 10}},
  "bands": [
    {"band": "title", "height": 26, "items": [
      {"text": "异常客户查询结果", "y": 0, "h": 10, "align": "center", "font": {"size": 18, "bold": true}},
      {"text": "单位：${Dwmc}", "x": 0, "y": 12, "w": 150, "h": 6},
      {"text": "打印日期：${Dyrq}", "x": 167, "y": 12, "w": 100, "h": 6, "align": "right"},
      {"text": "查询对象：${Cxdx}", "x": 0, "y": 18, "w": 180, "h": 6},
      {"text": "符合查询条件的记录数：${Jls} 条", "x": 167, "y": 18, "w": 100, "h": 6, "align": "right"}
    ]},
    {"band": "detail", "height": 7, "stretch": true, "titleHeight": 8, "columns": [
      {"title": "序号", "text": "${Line}", "width": 10, "align": "center"},
      {"title": "户号", "field": "HH", "width": 24, "align": "center"},
      {"title": "户名", "field": "HM", "width": 62, "wrap": true},
      {"title": "用电地址", "field": "YDDZ", "width": 47, "wrap": true},
      {"title": "客户类型", "field": "KHLX", "width": 22, "align": "center", "wrap": true},
      {"title": "合同容量", "field": "HTRL", "width": 18, "align": "right"},
      {"title": "电压等级", "field": "DYDJ", "width": 18, "align": "center"},
      {"title": "上次检查日期", "field": "SCJCRQ", "width": 24, "align": "center", "format": "yyyy-MM-dd"},
      {"title": "联系人", "field": "LXR", "width": 17, "align": "center", "wrap": true},
      {"title": "联系电话", "field": "LXDH", "width": 25, "align": "center"}
    ]},
    {"band": "pageFooter", "height": 8, "items": [
      {"text": "第 ${Page} 页 共 ${Pages} 页", "y": 2, "h": 6, "align": "center"}
    ]}
  ]
}');
