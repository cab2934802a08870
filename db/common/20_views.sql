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

-- Consecutive zero readings: per customer and ledger month, lxldys is the
-- number of ledger months up to and including this one, back to the last
-- month with energy, in which the customer's total energy (peak + flat +
-- valley, all billing points) was zero; 0 for a month with energy.
-- One row per customer and month: the month's row of its lowest billing
-- point stands for the month (no aggregate, so the filters of the texts
-- reach the indexes of y_khda and b_dltzxx).
CREATE VIEW v_lxld AS
SELECT a.*,
       m.ny AS ny,
       CAST((SELECT COUNT(DISTINCT z.ny)
               FROM b_dltzxx z
              WHERE z.hh = m.hh
                AND z.ny <= m.ny
                AND z.ny > COALESCE((SELECT MAX(n.ny)
                                       FROM b_dltzxx n
                                      WHERE n.hh = m.hh
                                        AND n.ny <= m.ny
                                        AND COALESCE(n.jffdl, 0) + COALESCE(n.jfpdl, 0) + COALESCE(n.jfgdl, 0) <> 0),
                                    '')) AS NUMERIC) AS lxldys
  FROM v_yckhda a
  JOIN b_dltzxx m ON m.hh = a.hh
 WHERE m.jfdbh = (SELECT MIN(x.jfdbh) FROM b_dltzxx x WHERE x.hh = m.hh AND x.ny = m.ny);

-- Swing against the same month of the previous year: bdl is
-- abs((this year - last year) / last year * 100), rounded to 2 places, over
-- the customer's total energy of the two months; NULL when last year's
-- month is missing or zero. One row per customer and month, as v_lxld.
CREATE VIEW v_qntqdlbd AS
SELECT a.*,
       m.ny AS ny,
       CAST((SELECT ROUND(ABS((SUM(CASE WHEN c.ny = m.ny THEN COALESCE(c.jffdl, 0) + COALESCE(c.jfpdl, 0) + COALESCE(c.jfgdl, 0) END)
                               - SUM(CASE WHEN c.ny <> m.ny THEN COALESCE(c.jffdl, 0) + COALESCE(c.jfpdl, 0) + COALESCE(c.jfgdl, 0) END))
                              * 100.0
                              / NULLIF(SUM(CASE WHEN c.ny <> m.ny THEN COALESCE(c.jffdl, 0) + COALESCE(c.jfpdl, 0) + COALESCE(c.jfgdl, 0) END), 0)), 2)
               FROM b_dltzxx c
              WHERE c.hh = m.hh
                AND c.ny IN (m.ny, (CAST(SUBSTR(m.ny, 1, 4) AS INTEGER) - 1) || SUBSTR(m.ny, 5, 2))) AS NUMERIC) AS bdl
  FROM v_yckhda a
  JOIN b_dltzxx m ON m.hh = a.hh
 WHERE m.jfdbh = (SELECT MIN(x.jfdbh) FROM b_dltzxx x WHERE x.hh = m.hh AND x.ny = m.ny);

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
