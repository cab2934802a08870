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

-- The survey sheet of a metering anomaly case, printed from the anomaly
-- screen for the metering staff to carry to site: the screen gives the
-- variables Cdbh and dw and the case's rows (DataSet_Yk_Dm->Mqry_Ckd, one
-- per piece of equipment, the case, customer and finding repeated on each);
-- the header takes the first row, the findings and signatures follow the
-- equipment table.
INSERT INTO z_report (bbmc, bbsm, mb) VALUES ('ckd', '计量装置查勘单，计量异常记录屏幕打印（查勘单）', '{
  "page": {"size": "A4", "orientation": "portrait", "margins": [15, 12, 15, 12],
           "font": {"family": "宋体", "size": 9}},
  "bands": [
    {"band": "title", "height": 97, "items": [
      {"text": "计量装置查勘单", "x": 0, "y": 0, "w": 180, "h": 10, "align": "center", "font": {"family": "黑体", "size": 18, "bold": true}},
      {"text": "单位：[DWMC]", "x": 0, "y": 12, "w": 70, "h": 6},
      {"text": "传单编号：${Cdbh}", "x": 70, "y": 12, "w": 58, "h": 6},
      {"text": "受理日期：[SQRQ]", "x": 128, "y": 12, "w": 52, "h": 6, "align": "right", "format": "yyyy年MM月dd日"},
      {"text": "客\n户\n信\n息", "x": 0, "y": 19, "w": 8, "h": 35, "frame": "all", "align": "center", "wrap": true},
      {"text": "户　　号", "x": 8, "y": 19, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[HH]", "x": 30, "y": 19, "w": 60, "h": 7, "frame": "all"},
      {"text": "户　　名", "x": 90, "y": 19, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[HM]", "x": 112, "y": 19, "w": 68, "h": 7, "frame": "all"},
      {"text": "用电地址", "x": 8, "y": 26, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[YDDZ]", "x": 30, "y": 26, "w": 150, "h": 7, "frame": "all"},
      {"text": "联 系 人", "x": 8, "y": 33, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[LXR]", "x": 30, "y": 33, "w": 60, "h": 7, "frame": "all"},
      {"text": "联系电话", "x": 90, "y": 33, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[LXDH]", "x": 112, "y": 33, "w": 68, "h": 7, "frame": "all"},
      {"text": "电压等级", "x": 8, "y": 40, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[DYDJMC]", "x": 30, "y": 40, "w": 60, "h": 7, "frame": "all"},
      {"text": "合同容量", "x": 90, "y": 40, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[HTRL] kVA", "x": 112, "y": 40, "w": 68, "h": 7, "frame": "all"},
      {"text": "供电线路", "x": 8, "y": 47, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[XLMC]", "x": 30, "y": 47, "w": 60, "h": 7, "frame": "all"},
      {"text": "台区/变压器", "x": 90, "y": 47, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[BYQMC]", "x": 112, "y": 47, "w": 68, "h": 7, "frame": "all"},
      {"text": "异常类别", "x": 8, "y": 54, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[YCLB]", "x": 30, "y": 54, "w": 150, "h": 7, "frame": "all"},
      {"text": "故障性质", "x": 8, "y": 61, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[GZXZMC]", "x": 30, "y": 61, "w": 60, "h": 7, "frame": "all"},
      {"text": "检查日期", "x": 90, "y": 61, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[JCRQ]", "x": 112, "y": 61, "w": 68, "h": 7, "frame": "all", "format": "yyyy-MM-dd"},
      {"text": "检查人员", "x": 8, "y": 68, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[JCRY]", "x": 30, "y": 68, "w": 60, "h": 7, "frame": "all"},
      {"text": "检查证号", "x": 90, "y": 68, "w": 22, "h": 7, "frame": "all", "align": "center"},
      {"text": "[JCZH]", "x": 112, "y": 68, "w": 68, "h": 7, "frame": "all"},
      {"text": "异常描述", "x": 8, "y": 75, "w": 22, "h": 12, "frame": "all", "align": "center"},
      {"text": "[SQBZ]", "x": 30, "y": 75, "w": 150, "h": 12, "frame": "all", "wrap": true},
      {"text": "异\n常\n情\n况", "x": 0, "y": 54, "w": 8, "h": 33, "frame": "all", "align": "center", "wrap": true},
      {"text": "计量装置及变更方案", "x": 0, "y": 90, "w": 70, "h": 7, "font": {"size": 11, "bold": true}},
      {"text": "状态　在运：留用　换取、拆除：拆回　新装：装出", "x": 70, "y": 90, "w": 110, "h": 7, "align": "right", "font": {"size": 8}}
    ]},
    {"band": "detail", "height": 6, "stretch": true, "titleHeight": 8, "columns": [
      {"title": "序号", "text": "${Line}", "width": 9, "align": "center", "wrap": true},
      {"title": "计量点编号", "field": "JLDBH", "width": 25, "align": "center", "wrap": true},
      {"title": "类别", "field": "LB", "width": 19, "align": "center", "wrap": true},
      {"title": "条形码/编号", "field": "SBBH", "width": 25, "align": "center", "wrap": true},
      {"title": "出厂编号", "field": "CCH", "width": 21, "align": "center", "wrap": true},
      {"title": "电压", "field": "DY", "width": 26, "align": "center", "wrap": true},
      {"title": "电流/变比", "field": "GG", "width": 21, "align": "center", "wrap": true},
      {"title": "准确度", "field": "JDDJ", "width": 12, "align": "center", "wrap": true},
      {"title": "倍率", "field": "BL", "width": 10, "align": "center", "wrap": true},
      {"title": "状态", "field": "BGSM", "width": 12, "align": "center", "wrap": true}
    ]},
    {"band": "summary", "height": 91, "items": [
      {"text": "现\n场\n核\n查\n情\n况", "x": 0, "y": 3, "w": 8, "h": 40, "frame": "all", "align": "center", "wrap": true},
      {"text": "[JCBZ]", "x": 8, "y": 3, "w": 172, "h": 40, "frame": "all", "wrap": true, "valign": "top"},
      {"text": "处\n理\n意\n见", "x": 0, "y": 43, "w": 8, "h": 22, "frame": "all", "align": "center", "wrap": true},
      {"text": "□更换计量装置　　□退补电量电费　　□现场校验　　□其他：", "x": 8, "y": 43, "w": 172, "h": 22, "frame": "all", "valign": "top"},
      {"text": "", "x": 0, "y": 65, "w": 90, "h": 20, "frame": "all"},
      {"text": "客户签字（盖章）：", "x": 2, "y": 66, "w": 60, "h": 6},
      {"text": "年　　月　　日", "x": 40, "y": 78, "w": 48, "h": 6, "align": "right"},
      {"text": "", "x": 90, "y": 65, "w": 90, "h": 20, "frame": "all"},
      {"text": "查勘人员签字：", "x": 92, "y": 66, "w": 60, "h": 6},
      {"text": "年　　月　　日", "x": 130, "y": 78, "w": 48, "h": 6, "align": "right"},
      {"text": "注：本单一式两份，客户与供电企业各执一份。现场核查情况由查勘人员如实填写，经客户签字确认。", "x": 0, "y": 86, "w": 180, "h": 5, "font": {"size": 8}}
    ]},
    {"band": "pageFooter", "height": 8, "items": [
      {"text": "第 ${Page} 页 共 ${Pages} 页", "x": 0, "y": 2, "w": 180, "h": 6, "align": "center", "font": {"size": 9}}
    ]}
  ]
}');
