-- report query
SELECT name, 'it''s' AS label, price * 1.5
FROM items /* all of them */
WHERE code <> 'A\tB' AND qty >= 10 // trailing note
  AND tag != "x";
