-- Reference schema: tables and indexes.
--
-- The same text builds the tables on SQLite and on PostgreSQL (a test keeps
-- db/sqlite/10_tables.sql and db/postgres/10_tables.sql identical), so both
-- engines hold the same tables with the same columns in the same order.
--
-- Conventions: identifiers unquoted (PostgreSQL folds them to lower case);
-- texts VARCHAR; numbers NUMERIC (SQLite gives such columns numeric
-- affinity); date-times TIMESTAMP(0) (SQLite keeps them as the text
-- 'YYYY-MM-DD HH:MM:SS'). Flags and states are the Chinese texts themselves
-- ('是', '否', '未审批', ...). Power factors are percentages (95 = 0.95).

-- ---------------------------------------------------------------------------
-- One-row table, so that "select ... from dual" runs everywhere.
CREATE TABLE dual (
    dummy VARCHAR(1)
);

-- ---------------------------------------------------------------------------
-- Organisation, operators, posts and functions

-- Supply units, in a tree through sjdw (parent unit).
CREATE TABLE z_dwbm (
    dm      VARCHAR(20) PRIMARY KEY,
    mc      VARCHAR(100) NOT NULL,
    sjdw    VARCHAR(20),
    jb      NUMERIC,                -- level in the tree, 1 = top
    sfyx    NUMERIC DEFAULT 1       -- 1 = in use
);
CREATE INDEX z_dwbm_sjdw ON z_dwbm (sjdw);

-- Departments. No unit column: the plan and batch texts join z_bmbm and
-- name their own dw, bz, ... without a table prefix.
CREATE TABLE z_bmbm (
    dm      VARCHAR(20) PRIMARY KEY,
    mc      VARCHAR(100) NOT NULL,
    sjbm    VARCHAR(20)
);

-- Operators of the system (the sign-in register).
CREATE TABLE z_xtczy (
    dm       VARCHAR(20) PRIMARY KEY,
    xingming VARCHAR(60) NOT NULL,
    dw       VARCHAR(20),
    bm       VARCHAR(20),
    kl       VARCHAR(100),          -- pass phrase (hash), empty = none
    sfyx     NUMERIC DEFAULT 1
);
CREATE INDEX z_xtczy_dw ON z_xtczy (dw);

-- Posts.
CREATE TABLE z_gw (
    dm      VARCHAR(20) PRIMARY KEY,
    mc      VARCHAR(100) NOT NULL,
    dw      VARCHAR(20),
    sfyx    NUMERIC DEFAULT 1
);

-- Operator holds post (zdm = post code).
CREATE TABLE z_czyygw (
    czydm   VARCHAR(20) NOT NULL,
    zdm     VARCHAR(20) NOT NULL,
    PRIMARY KEY (czydm, zdm)
);
CREATE INDEX z_czyygw_zdm ON z_czyygw (zdm);

-- Functions (bundles of business items).
CREATE TABLE z_ywzn (
    dm      VARCHAR(20) PRIMARY KEY,
    mc      VARCHAR(100) NOT NULL,
    sfyx    NUMERIC DEFAULT 1
);

-- Post carries function.
CREATE TABLE z_gwyzn (
    gwdm    VARCHAR(20) NOT NULL,
    zndm    VARCHAR(20) NOT NULL,
    PRIMARY KEY (gwdm, zndm)
);
CREATE INDEX z_gwyzn_zndm ON z_gwyzn (zndm);

-- Function grants a business item or handling code (cldm), e.g. '40102' or
-- the alarm-handling code '40099'.
CREATE TABLE z_znyywx (
    zndm    VARCHAR(20) NOT NULL,
    cldm    VARCHAR(20) NOT NULL,
    PRIMARY KEY (zndm, cldm)
);
CREATE INDEX z_znyywx_cldm ON z_znyywx (cldm);

-- ---------------------------------------------------------------------------
-- Businesses and the workflow

-- Business catalogue; ywlbdm is the business class ('0001' = business
-- expansion and change).
CREATE TABLE z_dlyxyw (
    ywdm    VARCHAR(3) PRIMARY KEY,
    ywmc    VARCHAR(100) NOT NULL,
    ywlbdm  VARCHAR(4),
    sfyx    NUMERIC DEFAULT 1
);

-- Business items and handling codes (every code an operator can be granted).
CREATE TABLE z_ywx (
    ywxdm   VARCHAR(5) PRIMARY KEY,
    ywxmc   VARCHAR(100) NOT NULL,
    ywdm    VARCHAR(3),
    sfyx    NUMERIC DEFAULT 1
);

-- Workflow definition: each item of a business and the item after it
-- (xywxdm empty = the case ends after this item); xh orders the items of
-- a business. fqwc = 1 on a first item that the starting screen performs
-- itself: starting the case finishes it, and the case waits at the next.
CREATE TABLE z_lcjd (
    ywxdm   VARCHAR(5) PRIMARY KEY,
    ywxmc   VARCHAR(100) NOT NULL,
    ywdm    VARCHAR(3) NOT NULL,
    xywxdm  VARCHAR(5),
    xh      NUMERIC,
    fqwc    NUMERIC DEFAULT 0
);
CREATE INDEX z_lcjd_ywdm ON z_lcjd (ywdm);
CREATE INDEX z_lcjd_xywxdm ON z_lcjd (xywxdm);

-- The module export that works a grantable code, for the host's to-do list
-- (a code without a row is worked outside this module).
CREATE TABLE tarvin_ywx_export (
    ywxdm       VARCHAR(5) PRIMARY KEY,
    export_name VARCHAR(40) NOT NULL
);

-- Current position of every open case: one row per document.
CREATE TABLE z_dqgw (
    cdbh      VARCHAR(10) PRIMARY KEY,
    ywdm      VARCHAR(3),
    khbh      VARCHAR(10),          -- account number of the customer
    hm        VARCHAR(100),
    yddz      VARCHAR(200),
    dqywx     VARCHAR(5),           -- current business item
    dqywxmc   VARCHAR(100),
    lastywx   VARCHAR(5),           -- item the case came from
    lastywxmc VARCHAR(100),
    czy       VARCHAR(20),          -- operator who sent it here
    glbm      VARCHAR(20),          -- supply unit the case belongs to
    yxj       VARCHAR(20),          -- urgency ('一般')
    kssj      TIMESTAMP(0),         -- case started
    jssj      TIMESTAMP(0)          -- arrived at the current item
);
CREATE INDEX z_dqgw_dqywx ON z_dqgw (dqywx, glbm);
CREATE INDEX z_dqgw_khbh ON z_dqgw (khbh);

-- Steps a case has gone through: one row per item worked on.
CREATE TABLE z_lcls (
    cdbh    VARCHAR(10) NOT NULL,
    xh      NUMERIC NOT NULL,       -- 1, 2, ... per document
    ywdm    VARCHAR(3),
    ywxdm   VARCHAR(5),
    ywxmc   VARCHAR(100),
    czy     VARCHAR(20),            -- operator who finished the item
    glbm    VARCHAR(20),
    jssj    TIMESTAMP(0),           -- arrived at the item
    wcsj    TIMESTAMP(0),           -- finished (empty while still there)
    PRIMARY KEY (cdbh, xh)
);

-- Work-order messages: a new work order waits for an operator.
CREATE TABLE z_gzdxx (
    cdbh    VARCHAR(10) NOT NULL,
    xh      NUMERIC NOT NULL,
    ywxdm   VARCHAR(5),
    jsczy   VARCHAR(20),            -- receiving operator
    nr      VARCHAR(400),
    fssj    TIMESTAMP(0),
    ydbz    VARCHAR(2) DEFAULT '否', -- read
    PRIMARY KEY (cdbh, xh)
);
CREATE INDEX z_gzdxx_jsczy ON z_gzdxx (jsczy, ydbz);

-- Report definitions by name: the template text the report renderer reads.
CREATE TABLE z_report (
    bbmc    VARCHAR(100) PRIMARY KEY,
    bbsm    VARCHAR(200),
    mb      VARCHAR,
    xgsj    TIMESTAMP(0)
);

-- ---------------------------------------------------------------------------
-- Code tables (dm = code, mc = name)

CREATE TABLE w_khlx  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- customer types
CREATE TABLE w_dydj  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- voltage levels
CREATE TABLE c_dydj  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- voltage levels (framework copy)
CREATE TABLE w_ydlb  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- electricity-use categories
CREATE TABLE w_zyhy  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- industries
CREATE TABLE w_qy    (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- regions
CREATE TABLE w_yhdm  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- banks
CREATE TABLE w_fkfs  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- payment methods (numeric codes)
CREATE TABLE w_jclx  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- inspection types
CREATE TABLE w_jcxm  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- inspection items
CREATE TABLE w_qxxz  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- defect natures
CREATE TABLE w_gzxz  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- fault natures of meters
CREATE TABLE w_dblb  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- meter categories
CREATE TABLE w_dl    (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- meter currents
CREATE TABLE w_xx    (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- phase-wire systems
CREATE TABLE w_dbdy  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- meter voltages
CREATE TABLE w_dnbjd (dm VARCHAR(20) PRIMARY KEY, dmsm VARCHAR(100) NOT NULL); -- meter accuracy classes
CREATE TABLE w_hgqlb (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- transformer categories ('TA' current)
CREATE TABLE w_hgqjd (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- transformer accuracy classes
CREATE TABLE w_dlbb  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- current-transformer ratios
CREATE TABLE w_dybb  (dm VARCHAR(20) PRIMARY KEY, mc VARCHAR(100) NOT NULL);  -- voltage-transformer ratios

-- Tariffs in force, and every tariff code ever used.
CREATE TABLE b_djb (
    djm     VARCHAR(20) PRIMARY KEY,
    djmc    VARCHAR(100) NOT NULL,
    dj      NUMERIC(12,4),          -- price per kWh
    ydlb    VARCHAR(20),
    dydj    VARCHAR(20)
);
CREATE TABLE all_djm (
    djm     VARCHAR(20) PRIMARY KEY,
    djmc    VARCHAR(100) NOT NULL,
    dj      NUMERIC(12,4),
    sfyx    VARCHAR(2) DEFAULT '是'
);

-- ---------------------------------------------------------------------------
-- Network: substations, feeders, transformers

CREATE TABLE y_bdz (
    bdzbh   VARCHAR(20) PRIMARY KEY,
    bdzmc   VARCHAR(100) NOT NULL,
    dydj    VARCHAR(20),
    dw      VARCHAR(20)
);

-- Feeders in a tree through sjxlbh; the top feeders have the parent '00001'.
CREATE TABLE y_xl (
    xlbh    VARCHAR(20) PRIMARY KEY,
    xlmc    VARCHAR(100) NOT NULL,
    sjxlbh  VARCHAR(20),
    bdzbh   VARCHAR(20),
    dydj    VARCHAR(20),
    dw      VARCHAR(20)
);
CREATE INDEX y_xl_sjxlbh ON y_xl (sjxlbh);
CREATE INDEX y_xl_dw ON y_xl (dw, sjxlbh);

-- Operating transformers: public ('公变', the transformer areas) and
-- dedicated ('专变', owned by customer hh).
CREATE TABLE y_yxbyq (
    byqbh   VARCHAR(20) PRIMARY KEY,
    byqmc   VARCHAR(100),
    byqlx   VARCHAR(10),            -- '公变' / '专变'
    hh      VARCHAR(10),
    xlbh    VARCHAR(20),
    rl      NUMERIC(12,2),          -- capacity, kVA
    zt      VARCHAR(10),            -- '运行' / '停用'
    tyrq    TIMESTAMP(0),           -- taken out of use
    dw      VARCHAR(20)
);
CREATE INDEX y_yxbyq_dw ON y_yxbyq (dw, byqlx);
CREATE INDEX y_yxbyq_hh ON y_yxbyq (hh);
CREATE INDEX y_yxbyq_xlbh ON y_yxbyq (xlbh);

-- Stop records of dedicated transformers: a transformer taken out of use at
-- the customer's request is sealed by the utility, and its record stays
-- open (hfrq empty) until the utility puts it back into use. fyzt is the
-- seal as last checked: '完好' intact, '破损' broken. The alarm scan reads
-- these records (out of use but used: seal broken; zero reading: no record).
CREATE TABLE y_byqty (
    byqbh   VARCHAR(20) NOT NULL,
    tyrq    TIMESTAMP(0) NOT NULL,  -- out of use (sealed) from
    hh      VARCHAR(10),
    hfrq    TIMESTAMP(0),           -- back in use from; empty while out of use
    fyzt    VARCHAR(10),            -- seal: '完好' / '破损'
    jcrq    TIMESTAMP(0),           -- seal last checked
    cdbh    VARCHAR(10),            -- document of the suspension
    dw      VARCHAR(20),
    PRIMARY KEY (byqbh, tyrq)
);
CREATE INDEX y_byqty_hh ON y_byqty (hh);

-- Supply energy and loss bounds of each transformer area per month.
CREATE TABLE g_tqgdl (
    tqbh    VARCHAR(20) NOT NULL,
    ny      VARCHAR(6) NOT NULL,
    dw      VARCHAR(20),
    gdl     NUMERIC(16,2),          -- energy supplied into the area, kWh
    shsx    NUMERIC(8,2),           -- loss-rate upper bound, %
    shxx    NUMERIC(8,2),           -- loss-rate lower bound, %
    PRIMARY KEY (tqbh, ny)
);
CREATE INDEX g_tqgdl_dw ON g_tqgdl (dw, ny);

-- ---------------------------------------------------------------------------
-- Customer file

-- Customer master. cdbh is the document of the last business that changed
-- the file; scjcrq / jczq the last inspection and the inspection cycle
-- (months); xhbz '是' marks a closed account.
CREATE TABLE y_khda (
    hh      VARCHAR(10) PRIMARY KEY,
    hm      VARCHAR(100),
    yddz    VARCHAR(200),
    pym     VARCHAR(40),            -- address code
    khlx    VARCHAR(20),
    zjmc    VARCHAR(40),            -- identity document kind
    zjhm    VARCHAR(40),
    htrl    NUMERIC(12,2),          -- contracted capacity, kVA
    lxr     VARCHAR(60),
    lxdh    VARCHAR(50),
    lxdz    VARCHAR(200),
    yzbm    VARCHAR(6),
    fkdw    VARCHAR(100),           -- paying party
    fkfs    NUMERIC,                -- payment method (w_fkfs)
    hyfl    VARCHAR(20),            -- industry (w_zyhy)
    ydlb    VARCHAR(20),            -- electricity-use category
    dydj    VARCHAR(20),            -- voltage level code
    yhdm    VARCHAR(20),            -- bank
    yhzh    VARCHAR(40),            -- bank account
    dw      VARCHAR(20),
    xzq     VARCHAR(20),            -- region (w_qy)
    sfxyh   VARCHAR(2),             -- agreement customer
    zwlxdh  VARCHAR(50),            -- finance contact phone, person, address
    zwlxr   VARCHAR(60),
    zwlxdz  VARCHAR(200),
    zzsyh   VARCHAR(100),           -- VAT invoice: bank, account, number, name
    zzszh   VARCHAR(40),
    zzsh    VARCHAR(40),
    zzsm    VARCHAR(100),
    zcdz    VARCHAR(200),           -- registered address
    scbc    VARCHAR(20),            -- production shifts
    zxr     VARCHAR(60),            -- account manager
    cbcbh   VARCHAR(20),            -- meter-reading book
    yhh     VARCHAR(20),            -- former account number
    xhbz    VARCHAR(2) DEFAULT '否',
    lhrq    TIMESTAMP(0),           -- account opened
    scjcrq  TIMESTAMP(0),
    jczq    NUMERIC,
    cdbh    VARCHAR(10)
);
CREATE INDEX y_khda_dw ON y_khda (dw);
CREATE INDEX y_khda_hm ON y_khda (hm);
CREATE INDEX y_khda_yddz ON y_khda (yddz);
CREATE INDEX y_khda_pym ON y_khda (pym);
CREATE INDEX y_khda_cbcbh ON y_khda (cbcbh);
CREATE INDEX y_khda_yhh ON y_khda (yhh);
CREATE INDEX y_khda_cdbh ON y_khda (cdbh);

-- Customer file of the shared register (read by the breach list).
CREATE TABLE g_khda (
    hh      VARCHAR(10) PRIMARY KEY,
    hm      VARCHAR(100),
    yddz    VARCHAR(200),
    khlx    VARCHAR(20),
    dw      VARCHAR(20)
);

-- Supply sources of a customer, one row per source. Exactly one source of a
-- customer is the main one (dyxz '主供'); dylx tells a public transformer
-- area ('公变') from a dedicated transformer ('专变').
CREATE TABLE y_gddy (
    hh      VARCHAR(10) NOT NULL,
    xh      NUMERIC NOT NULL,
    dyxz    VARCHAR(10),            -- '主供' / '备用'
    dylx    VARCHAR(10),            -- '公变' / '专变'
    bdzbh   VARCHAR(20),
    xlbh    VARCHAR(20),
    byqbh   VARCHAR(20),
    dydj    VARCHAR(20),
    dw      VARCHAR(20),
    PRIMARY KEY (hh, xh)
);
CREATE UNIQUE INDEX y_gddy_zg ON y_gddy (hh) WHERE dyxz = '主供';
CREATE INDEX y_gddy_xlbh ON y_gddy (xlbh);
CREATE INDEX y_gddy_byqbh ON y_gddy (byqbh);

-- Billing set-up per billing point: tariff, billing type ('抄表' read,
-- '定量' / '定比' fixed quantity or ratio) and the fixed value.
CREATE TABLE y_jfxx (
    hh      VARCHAR(10) NOT NULL,
    jfdbh   VARCHAR(20) NOT NULL,
    djm     VARCHAR(20),
    js      NUMERIC,                -- number of billing steps
    jflx    VARCHAR(10),
    dldbz   NUMERIC(16,2),
    dw      VARCHAR(20),
    PRIMARY KEY (hh, jfdbh)
);
CREATE INDEX y_jfxx_djm ON y_jfxx (djm);
-- The few fixed-quantity and fixed-ratio billings screening looks for.
CREATE INDEX y_jfxx_dldb ON y_jfxx (hh) WHERE js > 1 AND jflx <> '抄表';

-- Supply contracts.
CREATE TABLE y_htxx (
    hh      VARCHAR(10) NOT NULL,
    htbh    VARCHAR(20) NOT NULL,
    htlx    VARCHAR(20),
    qdrq    TIMESTAMP(0),           -- signed
    yxrq    TIMESTAMP(0),           -- valid until
    dw      VARCHAR(20),
    PRIMARY KEY (hh, htbh)
);
CREATE INDEX y_htxx_yxrq ON y_htxx (yxrq);

-- Operating energy meters (one per bar code txm).
CREATE TABLE y_yxdnb (
    txm      VARCHAR(20) PRIMARY KEY,
    hh       VARCHAR(10) NOT NULL,
    jfdbh    VARCHAR(20),           -- billing point
    jldbh    VARCHAR(20),           -- metering point
    byqbh    VARCHAR(20),
    dnbcch   VARCHAR(30),           -- factory number
    dblb     VARCHAR(20),           -- meter category (w_dblb name)
    dl       VARCHAR(20),
    xx       VARCHAR(20),
    jddj     VARCHAR(20),
    dy       VARCHAR(20),
    bj       VARCHAR(20),
    cbsx     NUMERIC,               -- reading order
    zhbl     NUMERIC(12,2),         -- multiplying ratio
    cq       VARCHAR(20),           -- ownership
    ckbbz    VARCHAR(2),            -- reference meter
    gkbbz    VARCHAR(2),            -- gateway meter
    jlzzdfl  VARCHAR(20),           -- metering-device class
    zbwz     VARCHAR(100),          -- position
    jbh      VARCHAR(30),           -- office number
    ygxsjsfs VARCHAR(10),           -- active / reactive line-loss method and value
    ygxsjsz  NUMERIC(12,4),
    wgxsjsfs VARCHAR(10),
    wgxsjsz  NUMERIC(12,4),
    cblb     VARCHAR(20),           -- reading category
    sslx     VARCHAR(10),           -- register kinds
    zcrq     TIMESTAMP(0),          -- installed
    dw       VARCHAR(20)
);
CREATE INDEX y_yxdnb_hh ON y_yxdnb (hh, jldbh);
CREATE INDEX y_yxdnb_dnbcch ON y_yxdnb (dnbcch);

-- Operating instrument transformers.
CREATE TABLE y_yxhgq (
    hgqbh   VARCHAR(20) PRIMARY KEY,
    hh      VARCHAR(10) NOT NULL,
    jldbh   VARCHAR(20),
    sddbh   VARCHAR(20),
    hgqcch  VARCHAR(30),
    hgqlb   VARCHAR(20),            -- category (w_hgqlb code)
    hgqbb   VARCHAR(20),            -- ratio
    jddj    VARCHAR(20),
    zs      NUMERIC,                -- count
    dw      VARCHAR(20)
);
CREATE INDEX y_yxhgq_hh ON y_yxhgq (hh, jldbh);

-- Own generation of customers.
CREATE TABLE e_zbdygl (
    hh      VARCHAR(10) NOT NULL,
    xh      NUMERIC NOT NULL,
    dymc    VARCHAR(100),
    dylx    VARCHAR(20),
    rl      NUMERIC(12,2),
    tyrq    TIMESTAMP(0),
    dw      VARCHAR(20),
    PRIMARY KEY (hh, xh)
);

-- ---------------------------------------------------------------------------
-- Billing

-- Meter-reading books.
CREATE TABLE b_cbc (
    cbcbh   VARCHAR(20) PRIMARY KEY,
    cbcmc   VARCHAR(100),
    cby     VARCHAR(60),            -- reader
    dw      VARCHAR(20)
);
CREATE INDEX b_cbc_dw ON b_cbc (dw);

-- Energy ledger: billed energy per account, month and billing point.
CREATE TABLE b_dltzxx (
    hh      VARCHAR(10) NOT NULL,
    ny      VARCHAR(6) NOT NULL,
    jfdbh   VARCHAR(20) NOT NULL,
    jffdl   NUMERIC(16,2) DEFAULT 0, -- peak, flat, valley energy, kWh
    jfpdl   NUMERIC(16,2) DEFAULT 0,
    jfgdl   NUMERIC(16,2) DEFAULT 0,
    wgdl    NUMERIC(16,2) DEFAULT 0, -- reactive energy, kvarh
    sjll    NUMERIC(6,2),           -- actual power factor, %
    llkhbz  NUMERIC(6,2),           -- power-factor standard, %
    djm     VARCHAR(20),
    cbrq    TIMESTAMP(0),           -- read on
    dw      VARCHAR(20),
    PRIMARY KEY (hh, ny, jfdbh)
);
CREATE INDEX b_dltzxx_ny ON b_dltzxx (ny, hh);
-- Screening by power factor and by peak against valley energy reads the
-- rows of a month past a threshold; only rows with a power factor, or with
-- valley energy, are indexed (the expression is v_fgdlyc's fgb).
CREATE INDEX b_dltzxx_ll ON b_dltzxx (ny, sjll) WHERE sjll IS NOT NULL;
CREATE INDEX b_dltzxx_fgb ON b_dltzxx (ny, CAST(CASE WHEN COALESCE(jfgdl, 0) = 0 THEN NULL ELSE ROUND(COALESCE(jffdl, 0) * 100.0 / jfgdl, 2) END AS NUMERIC))
    WHERE CAST(CASE WHEN COALESCE(jfgdl, 0) = 0 THEN NULL ELSE ROUND(COALESCE(jffdl, 0) * 100.0 / jfgdl, 2) END AS NUMERIC) IS NOT NULL;

-- Charges per account and month; a negative ysdf is a refund.
CREATE TABLE c_dfxx (
    hh      VARCHAR(10) NOT NULL,
    ny      VARCHAR(6) NOT NULL,
    xh      NUMERIC NOT NULL,
    ysdf    NUMERIC(16,2),          -- receivable
    ssdf    NUMERIC(16,2),          -- received
    fxrq    TIMESTAMP(0),           -- issued
    dw      VARCHAR(20),
    PRIMARY KEY (hh, ny, xh)
);
CREATE INDEX c_dfxx_ny ON c_dfxx (ny, hh);
-- A month's refunds (a negative receivable), which screening looks for.
CREATE INDEX c_dfxx_tf ON c_dfxx (ny, hh) WHERE ysdf < 0;

-- Refund/supplement records of a case (glcdbh) under their own refund
-- document (tbcdh), and the amounts per month and billing point.
CREATE TABLE b_tbjl (
    tbcdh   VARCHAR(10),
    glcdbh  VARCHAR(10),
    hh      VARCHAR(10),
    tblx    VARCHAR(10),            -- '退' / '补'
    tbyy    VARCHAR(400),
    jbr     VARCHAR(60),
    jbrq    TIMESTAMP(0),
    dw      VARCHAR(20)
);
CREATE INDEX b_tbjl_glcdbh ON b_tbjl (glcdbh);
CREATE INDEX b_tbjl_tbcdh ON b_tbjl (tbcdh);

CREATE TABLE b_tbdfxx (
    tbcdh   VARCHAR(10) NOT NULL,
    hh      VARCHAR(10),
    ny      VARCHAR(6),
    jfdbh   VARCHAR(20),
    fdl     NUMERIC(16,2) DEFAULT 0, -- peak, valley, flat energy
    gdl     NUMERIC(16,2) DEFAULT 0,
    pdl     NUMERIC(16,2) DEFAULT 0,
    fdf     NUMERIC(16,2) DEFAULT 0, -- their charges
    gdf     NUMERIC(16,2) DEFAULT 0,
    pdf     NUMERIC(16,2) DEFAULT 0,
    dsk6    NUMERIC(16,2) DEFAULT 0, -- surcharges collected with the bill
    dsk7    NUMERIC(16,2) DEFAULT 0,
    rldf    NUMERIC(16,2) DEFAULT 0, -- basic charge by capacity
    xldf    NUMERIC(16,2) DEFAULT 0, -- basic charge by demand
    lldf    NUMERIC(16,2) DEFAULT 0  -- power-factor adjustment
);
CREATE INDEX b_tbdfxx_tbcdh ON b_tbdfxx (tbcdh);

-- ---------------------------------------------------------------------------
-- Applications (business expansion) and their archive

-- Application of a workflow document; the columns after sqbz are copied
-- from y_khda.
CREATE TABLE a_khsqxx (
    cdbh    VARCHAR(10) PRIMARY KEY,
    slbm    VARCHAR(20),            -- accepting department
    ywdm    VARCHAR(3),
    sqrq    TIMESTAMP(0),
    sqbz    VARCHAR(1000),
    hh      VARCHAR(10),
    khlx    VARCHAR(20),
    hm      VARCHAR(100),
    yddz    VARCHAR(200),
    zjmc    VARCHAR(40),
    zjhm    VARCHAR(40),
    htrl    NUMERIC(12,2),
    lxr     VARCHAR(60),
    lxdh    VARCHAR(50),
    lxdz    VARCHAR(200),
    yzbm    VARCHAR(6),
    fkdw    VARCHAR(100),
    fkfs    NUMERIC,
    hyfl    VARCHAR(20),
    ydlb    VARCHAR(20),
    dydj    VARCHAR(20),
    yhdm    VARCHAR(20),
    yhzh    VARCHAR(40),
    dw      VARCHAR(20),
    xzq     VARCHAR(20),
    sfxyh   VARCHAR(2),
    zwlxdh  VARCHAR(50),
    zwlxr   VARCHAR(60),
    zwlxdz  VARCHAR(200),
    zzsyh   VARCHAR(100),
    zzszh   VARCHAR(40),
    zzsh    VARCHAR(40),
    zzsm    VARCHAR(100),
    zcdz    VARCHAR(200),
    scbc    VARCHAR(20),
    zxr     VARCHAR(60),
    cbcbh   VARCHAR(20),
    yhh     VARCHAR(20)
);
CREATE INDEX a_khsqxx_hh ON a_khsqxx (hh);

-- Control flags of a document. Flags are '是', '否' or '无' (not relevant).
CREATE TABLE a_ykkzb (
    cdbh    VARCHAR(10) PRIMARY KEY,
    sfygz   VARCHAR(2),             -- fault found
    sfxyb   VARCHAR(2),             -- needs meter verification
    sfcjx   VARCHAR(2),             -- wrong wiring
    sfxysf  VARCHAR(2),             -- business fee charged
    sfwyqd  VARCHAR(2),             -- breach or theft
    htrl    NUMERIC(12,2)
);

-- Archive: the same columns in the same order, then the archiving time, so
-- "insert into a_h_khsqxx select a.*, <time> from a_khsqxx a" copies a row.
CREATE TABLE a_h_khsqxx (
    cdbh    VARCHAR(10) PRIMARY KEY,
    slbm    VARCHAR(20),
    ywdm    VARCHAR(3),
    sqrq    TIMESTAMP(0),
    sqbz    VARCHAR(1000),
    hh      VARCHAR(10),
    khlx    VARCHAR(20),
    hm      VARCHAR(100),
    yddz    VARCHAR(200),
    zjmc    VARCHAR(40),
    zjhm    VARCHAR(40),
    htrl    NUMERIC(12,2),
    lxr     VARCHAR(60),
    lxdh    VARCHAR(50),
    lxdz    VARCHAR(200),
    yzbm    VARCHAR(6),
    fkdw    VARCHAR(100),
    fkfs    NUMERIC,
    hyfl    VARCHAR(20),
    ydlb    VARCHAR(20),
    dydj    VARCHAR(20),
    yhdm    VARCHAR(20),
    yhzh    VARCHAR(40),
    dw      VARCHAR(20),
    xzq     VARCHAR(20),
    sfxyh   VARCHAR(2),
    zwlxdh  VARCHAR(50),
    zwlxr   VARCHAR(60),
    zwlxdz  VARCHAR(200),
    zzsyh   VARCHAR(100),
    zzszh   VARCHAR(40),
    zzsh    VARCHAR(40),
    zzsm    VARCHAR(100),
    zcdz    VARCHAR(200),
    scbc    VARCHAR(20),
    zxr     VARCHAR(60),
    cbcbh   VARCHAR(20),
    yhh     VARCHAR(20),
    gdsj    TIMESTAMP(0)            -- archived
);
CREATE INDEX a_h_khsqxx_hh ON a_h_khsqxx (hh, ywdm);
CREATE INDEX a_h_khsqxx_sqrq ON a_h_khsqxx (sqrq, ywdm);

CREATE TABLE a_h_ykkzb (
    cdbh    VARCHAR(10) PRIMARY KEY,
    sfygz   VARCHAR(2),
    sfxyb   VARCHAR(2),
    sfcjx   VARCHAR(2),
    sfxysf  VARCHAR(2),
    sfwyqd  VARCHAR(2),
    htrl    NUMERIC(12,2),
    gdsj    TIMESTAMP(0)
);

-- Supply scheme header of a document.
CREATE TABLE a_gdfa (
    gdfabh  VARCHAR(10) PRIMARY KEY,
    cdbh    VARCHAR(10) NOT NULL,
    hh      VARCHAR(10),
    kcr     VARCHAR(60),            -- surveyor
    kcbz    VARCHAR(1000),          -- survey remark
    kcrq    TIMESTAMP(0)
);
CREATE INDEX a_gdfa_cdbh ON a_gdfa (cdbh);

-- ---------------------------------------------------------------------------
-- Metering schemes of a document: meters and transformers that come off
-- (bgsm '换取', '拆除', '虚拆', '移表') and go on ('新装').

CREATE TABLE a_dnbfa (
    id       VARCHAR(10) PRIMARY KEY,
    cdbh     VARCHAR(10) NOT NULL,
    hh       VARCHAR(10),
    jfdbh    VARCHAR(20),
    jldbh    VARCHAR(20),
    txm      VARCHAR(20),
    byqbh    VARCHAR(20),
    dnbcch   VARCHAR(30),
    dblb     VARCHAR(20),
    gzlx     VARCHAR(20),           -- fault nature (w_gzxz code)
    dl       VARCHAR(20),
    xx       VARCHAR(20),
    bgsm     VARCHAR(8),
    jddj     VARCHAR(20),
    dy       VARCHAR(20),
    bj       VARCHAR(20),
    cbsx     NUMERIC,
    dw       VARCHAR(20),
    zhbl     NUMERIC(12,2),
    cq       VARCHAR(20),
    ckbbz    VARCHAR(2),
    gkbbz    VARCHAR(2),
    jlzzdfl  VARCHAR(20),
    thdl     VARCHAR(20),           -- current and phase-wire of the meter replaced
    thxx     VARCHAR(20),
    zbwz     VARCHAR(100),
    jbh      VARCHAR(30),
    ygxsjsfs VARCHAR(10),
    ygxsjsz  NUMERIC(12,4),
    wgxsjsfs VARCHAR(10),
    wgxsjsz  NUMERIC(12,4),
    cblb     VARCHAR(20),
    sslx     VARCHAR(10)
);
CREATE INDEX a_dnbfa_cdbh ON a_dnbfa (cdbh, jldbh);
CREATE INDEX a_dnbfa_txm ON a_dnbfa (txm);

CREATE TABLE a_hgqfa (
    id      VARCHAR(10) PRIMARY KEY,
    cdbh    VARCHAR(10) NOT NULL,
    hh      VARCHAR(10),
    jldbh   VARCHAR(20),
    sddbh   VARCHAR(20),
    hgqcch  VARCHAR(30),
    hgqbh   VARCHAR(20),
    hgqlb   VARCHAR(20),
    hgqbb   VARCHAR(20),
    bgsm    VARCHAR(8),
    zs      NUMERIC,
    gzlb    VARCHAR(20),
    jddj    VARCHAR(20),
    dw      VARCHAR(20)
);
CREATE INDEX a_hgqfa_cdbh ON a_hgqfa (cdbh, jldbh);
CREATE INDEX a_hgqfa_hgqbh ON a_hgqfa (hgqbh);
CREATE INDEX a_hgqfa_jldbh ON a_hgqfa (jldbh, hgqlb);

-- ---------------------------------------------------------------------------
-- Inspection

-- Annual and monthly plans; jhbh is a four-digit text numbered over the table.
CREATE TABLE e_jcjh (
    jhbh    VARCHAR(10) PRIMARY KEY,
    jhlx    VARCHAR(10),            -- '年计划' / '月计划'
    jhjcqrq TIMESTAMP(0),
    jhjczrq TIMESTAMP(0),
    jcbm    VARCHAR(100),           -- inspecting department, by NAME
    jchs    NUMERIC,
    jcnr    VARCHAR(1000),
    bz      VARCHAR(1000),
    dw      VARCHAR(20),
    zdbm    VARCHAR(20),            -- drafting department, by CODE
    zdr     VARCHAR(60),
    zdrq    TIMESTAMP(0)
);
CREATE INDEX e_jcjh_dw ON e_jcjh (dw, jhlx);

-- Inspectors.
CREATE TABLE e_jcryxx (
    czydm   VARCHAR(20) PRIMARY KEY,
    xm      VARCHAR(60),
    jczh    VARCHAR(30),            -- inspection certificate number
    jczjb   VARCHAR(20),            -- certificate level
    xb      VARCHAR(4),
    dw      VARCHAR(20)
);
CREATE INDEX e_jcryxx_dw ON e_jcryxx (dw);

-- Inspection batches (arrangements) and their approval.
CREATE TABLE e_jcgzap (
    jcph    VARCHAR(10) PRIMARY KEY,
    jcbm    VARCHAR(20),            -- inspecting department, by CODE
    jcnr    VARCHAR(1000),
    dw      VARCHAR(20),
    bz      VARCHAR(1000),
    zdr     VARCHAR(60),
    zdsj    TIMESTAMP(0),
    spr     VARCHAR(60),
    spyj    VARCHAR(100),
    sprq    TIMESTAMP(0)
);
CREATE INDEX e_jcgzap_dw ON e_jcgzap (dw, zdsj);
CREATE INDEX e_jcgzap_sprq ON e_jcgzap (sprq);

-- Inspection tasks, one per customer and document. zt: '未审批',
-- '已审批', '已检查'; dybz '1' = work order printed and sent on.
CREATE TABLE e_jcgzjl (
    cdbh    VARCHAR(10) PRIMARY KEY,
    hh      VARCHAR(10),
    hm      VARCHAR(100),
    yddz    VARCHAR(200),
    khlx    VARCHAR(20),
    dydj    VARCHAR(20),
    xlbh    VARCHAR(20),
    tqbh    VARCHAR(20),
    jczq    NUMERIC,
    scjcrq  TIMESTAMP(0),
    jhlx    VARCHAR(10),
    jhjcrq  TIMESTAMP(0),
    jclx    VARCHAR(100),           -- inspection type, by NAME
    jcry    VARCHAR(100),
    jczh    VARCHAR(100),
    qtry    VARCHAR(60),
    hjrs    VARCHAR(10),            -- head count as typed
    zt      VARCHAR(10),
    jcph    VARCHAR(10),
    dybz    VARCHAR(1),
    jcrq    TIMESTAMP(0),
    jczg    VARCHAR(60),            -- inspection supervisor
    fjlxdh  VARCHAR(50),            -- re-inspection contact phone
    khqz    VARCHAR(60),            -- customer signature
    jcjg    VARCHAR(1000),          -- result
    czwt    VARCHAR(1000)           -- problems found
);
CREATE INDEX e_jcgzjl_jcph ON e_jcgzjl (jcph);
CREATE INDEX e_jcgzjl_hh ON e_jcgzjl (hh);
CREATE INDEX e_jcgzjl_jhjcrq ON e_jcgzjl (jhjcrq);
CREATE INDEX e_jcgzjl_jcrq ON e_jcgzjl (jcrq);

-- Result per inspection item of a task.
CREATE TABLE e_jcjg (
    cdbh    VARCHAR(10) NOT NULL,
    dm      VARCHAR(20) NOT NULL,   -- inspection item (w_jcxm)
    mc      VARCHAR(100),
    xcqk    VARCHAR(1000),          -- what was found on site
    PRIMARY KEY (cdbh, dm)
);

-- Defects and hazards found on inspection.
CREATE TABLE e_qxqkjl (
    id      VARCHAR(10) PRIMARY KEY,
    cdbh    VARCHAR(10),
    hh      VARCHAR(10),
    qxxz    VARCHAR(20),            -- defect nature (w_qxxz)
    qxms    VARCHAR(1000),
    fxrq    TIMESTAMP(0),
    zgqx    TIMESTAMP(0),           -- to be remedied by
    sffc    VARCHAR(2),             -- re-inspection needed
    fccdbh  VARCHAR(10),            -- the re-inspection's document
    zt      VARCHAR(10),
    jlr     VARCHAR(60),
    jlrq    TIMESTAMP(0),
    dw      VARCHAR(20)
);
CREATE INDEX e_qxqkjl_cdbh ON e_qxqkjl (cdbh);
CREATE INDEX e_qxqkjl_hh ON e_qxqkjl (hh);

-- Metering anomaly work sheet, one per document; the amounts are the
-- refund (negative) or supplement of the case.
CREATE TABLE e_jlycgzd (
    cdbh    VARCHAR(10) PRIMARY KEY,
    hh      VARCHAR(10),
    hm      VARCHAR(100),
    yddz    VARCHAR(200),
    jcry    VARCHAR(100),
    jczh    VARCHAR(100),
    ycxz    VARCHAR(20),            -- anomaly nature
    gzlx    VARCHAR(20),            -- fault type (w_gzxz)
    rdyj    VARCHAR(100),           -- basis of determination
    jcrq    TIMESTAMP(0),
    jcbz    VARCHAR(1000),
    dw      VARCHAR(20),
    ywdm    VARCHAR(3),
    sfcl    VARCHAR(1),
    zbzdl   NUMERIC(16,2),          -- energy refunded or supplemented
    zbdldf  NUMERIC(16,2),          -- its energy charge
    zbjbdf  NUMERIC(16,2),          -- basic charge
    zblldf  NUMERIC(16,2),          -- power-factor charge
    wysydf  NUMERIC(16,2),          -- penalty for breach of use
    yzbdf   NUMERIC(16,2),          -- total to refund or supplement
    clbz    VARCHAR(1000),          -- handling remark
    clry    VARCHAR(60),
    clrq    TIMESTAMP(0),
    spry    VARCHAR(60),
    sprq    TIMESTAMP(0)
);
CREATE INDEX e_jlycgzd_hh ON e_jlycgzd (hh);

-- Breach / theft cases and their items.
CREATE TABLE j_wyydqd (
    cdbh    VARCHAR(10) PRIMARY KEY,
    hh      VARCHAR(10),
    wylx    VARCHAR(20),            -- '违约' / '窃电'
    wyrq    TIMESTAMP(0),
    wydl    NUMERIC(16,2),
    wysydf  NUMERIC(16,2),
    dw      VARCHAR(20)
);
CREATE INDEX j_wyydqd_hh ON j_wyydqd (hh);

CREATE TABLE j_wymx (
    cdbh    VARCHAR(10) NOT NULL,
    xh      NUMERIC NOT NULL,
    wyxm    VARCHAR(100),
    wysm    VARCHAR(400),
    je      NUMERIC(16,2),
    PRIMARY KEY (cdbh, xh)
);

-- ---------------------------------------------------------------------------
-- Alarms

-- Alarm kinds each operator wants ('01'..'06'; sfyx '是' / '否').
CREATE TABLE e_bjxz (
    czydm   VARCHAR(20) NOT NULL,
    bjdm    VARCHAR(2) NOT NULL,
    sfyx    VARCHAR(2),
    PRIMARY KEY (czydm, bjdm)
);

-- Alarms raised for customers; zt '未处理' / '已处理'.
CREATE TABLE e_bjtx (
    ny      VARCHAR(6) NOT NULL,
    hh      VARCHAR(10) NOT NULL,
    bjdm    VARCHAR(2) NOT NULL,
    bjxm    VARCHAR(200),
    dw      VARCHAR(20),
    zt      VARCHAR(10) DEFAULT '未处理',
    txrq    TIMESTAMP(0),
    clqk    VARCHAR(1000),
    clr     VARCHAR(60),
    clrq    TIMESTAMP(0),
    PRIMARY KEY (ny, hh, bjdm)
);
CREATE INDEX e_bjtx_dw ON e_bjtx (dw, zt);
