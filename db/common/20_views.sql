-- Reference schema: views, one text for SQLite and PostgreSQL.
--
-- The screening texts put the common filters (a.dw, a.dydjdm, a.khlxdm,
-- a.ydlb, a.htrl, a.tch, a.xlbh, a.tqbh, a.hyfl, a.hh) after every category
-- text, so every screening view carries the customer columns of v_yckhda.
-- Computed numeric columns are CAST AS NUMERIC: on SQLite the column then
-- has numeric affinity and a bound text such as '30' compares with it as a
-- number; on PostgreSQL they are plain numerics, and a quoted '30' compares
-- with them as a number all the same.

-- Units: the unit register with its parent unit.
CREATE VIEW v_dw AS
SELECT dm, mc, sjdw
  FROM z_dwbm;

-- Public transformers (the transformer areas).
CREATE VIEW v_gybyq AS
SELECT byqbh, byqmc, dw, xlbh, rl, zt
  FROM y_yxbyq
 WHERE byqlx = '公变';

-- Payment methods.
CREATE VIEW v_fkfs AS
SELECT dm, mc
  FROM w_fkfs;

-- The customer master offered to screening: one row per open account (a
-- closed one has xhbz '是'), whatever its inspection cycle, so that a
-- household is screened like a plant; with code names, the main supply
-- source's feeder and, when that source is a public transformer, its area.
CREATE VIEW v_yckhda AS
SELECT a.hh,
       a.hm,
       a.yddz,
       (SELECT k.mc FROM w_khlx k WHERE k.dm = a.khlx) AS khlx,
       a.htrl,
       (SELECT d.mc FROM w_dydj d WHERE d.dm = a.dydj) AS dydj,
       a.scjcrq,
       a.jczq,
       a.zxr,
       a.lxr,
       a.lxdh,
       a.dw,
       a.dydj AS dydjdm,
       a.khlx AS khlxdm,
       a.ydlb,
       a.cbcbh AS tch,
       z.xlbh,
       g.byqbh AS tqbh,
       a.hyfl,
       a.cdbh
  FROM y_khda a
  LEFT JOIN y_gddy z ON z.hh = a.hh AND z.dyxz = '主供'
  LEFT JOIN y_gddy g ON g.hh = a.hh AND g.dyxz = '主供' AND g.dylx = '公变'
 WHERE COALESCE(a.xhbz, '否') = '否';

-- Peak against valley energy per ledger row: fgb = peak / valley * 100;
-- NULL without valley energy.
CREATE VIEW v_fgdlyc AS
SELECT hh,
       ny,
       jfdbh,
       dw,
       jffdl,
       jfgdl,
       CAST(CASE WHEN COALESCE(jfgdl, 0) = 0 THEN NULL
                 ELSE ROUND(COALESCE(jffdl, 0) * 100.0 / jfgdl, 2)
            END AS NUMERIC) AS fgb
  FROM b_dltzxx;

-- Loss analysis of the public transformer areas per month: energy supplied
-- into the area against the energy billed to the customers whose main
-- source is the area; xsl = (gdl - sdl) / gdl * 100, NULL without supply.
-- The CROSS JOIN keeps the area's customers as the outer loop (SQLite
-- keeps the written order of a CROSS JOIN).
CREATE VIEW g_gytqshfx AS
SELECT t.dw,
       t.ny,
       t.tqbh,
       b.byqmc AS tqmc,
       t.gdl,
       CAST(t.sdl AS NUMERIC) AS sdl,
       CAST(CASE WHEN COALESCE(t.gdl, 0) = 0 THEN NULL
                 ELSE ROUND((t.gdl - COALESCE(t.sdl, 0)) * 100.0 / t.gdl, 2)
            END AS NUMERIC) AS xsl,
       t.shsx,
       t.shxx
  FROM (SELECT q.*,
               (SELECT SUM(COALESCE(d.jffdl, 0) + COALESCE(d.jfpdl, 0) + COALESCE(d.jfgdl, 0))
                  FROM y_gddy g
                 CROSS JOIN b_dltzxx d
                 WHERE d.hh = g.hh AND d.ny = q.ny
                   AND g.byqbh = q.tqbh
                   AND g.dyxz = '主供') AS sdl
          FROM g_tqgdl q) t
  LEFT JOIN y_yxbyq b ON b.byqbh = t.tqbh;
