-- Reference schema: planner statistics (PostgreSQL).
--
-- v_yckhda keeps the open accounts with COALESCE(xhbz, '否') = '否'; without
-- statistics on that expression the planner takes it for a rare condition
-- and joins the unit's customers to the ledger by nested loops. ANALYZE
-- (autovacuum, or the demo generator at its end) fills it.
CREATE STATISTICS y_khda_open ON (COALESCE(xhbz, '否')) FROM y_khda;

-- The swing against the average of the n months before, as the screening
-- asks for it (tarvin_pjdlbd inlined, n = 1..12, sign dropped): with its
-- statistics the planner sees that few customers pass a threshold and
-- starts from them instead of from the unit's every customer.
CREATE STATISTICS b_ydlhz_pjdlbd1 ON (round(abs((zdl - pjdl[1]) / NULLIF(pjdl[1], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd2 ON (round(abs((zdl - pjdl[2]) / NULLIF(pjdl[2], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd3 ON (round(abs((zdl - pjdl[3]) / NULLIF(pjdl[3], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd4 ON (round(abs((zdl - pjdl[4]) / NULLIF(pjdl[4], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd5 ON (round(abs((zdl - pjdl[5]) / NULLIF(pjdl[5], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd6 ON (round(abs((zdl - pjdl[6]) / NULLIF(pjdl[6], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd7 ON (round(abs((zdl - pjdl[7]) / NULLIF(pjdl[7], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd8 ON (round(abs((zdl - pjdl[8]) / NULLIF(pjdl[8], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd9 ON (round(abs((zdl - pjdl[9]) / NULLIF(pjdl[9], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd10 ON (round(abs((zdl - pjdl[10]) / NULLIF(pjdl[10], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd11 ON (round(abs((zdl - pjdl[11]) / NULLIF(pjdl[11], 0) * 100), 2)) FROM b_ydlhz;
CREATE STATISTICS b_ydlhz_pjdlbd12 ON (round(abs((zdl - pjdl[12]) / NULLIF(pjdl[12], 0) * 100), 2)) FROM b_ydlhz;

-- Peak against valley energy (v_fgdlyc.fgb): few rows pass a screening
-- threshold, which the planner sees only with statistics on the expression.
CREATE STATISTICS b_dltzxx_fgb ON ((CASE WHEN COALESCE(jfgdl, 0) = 0 THEN NULL ELSE ROUND(COALESCE(jffdl, 0) * 100.0 / jfgdl, 2) END)) FROM b_dltzxx;
