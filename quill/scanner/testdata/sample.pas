unit Demo;
{ A small unit }
interface
const
  CRLF = #13#10;
  Title = 'It''s here';
  Mask = $FF;
function Twice(X: Integer): Integer;
implementation
(* body *)
function Twice(X: Integer): Integer;
begin
  Result := X * 2 + 3.5e2; // LOCALIZE OFF
  Writeln('a', #65, Title)
end;
end.
